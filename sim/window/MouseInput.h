// The mouse of the window.
#pragma once

union SDL_Event;
struct SDL_Cursor;

namespace sim {

class MouseInput {
 public:
  MouseInput() = default;
  ~MouseInput();
  MouseInput(const MouseInput&) = delete;
  MouseInput& operator=(const MouseInput&) = delete;

  // An event of the mouse, and whether it is the panels': then plugins hear nothing of it, but when the mouse
  // was pressed over the flight and is held still.
  void Take(const SDL_Event& event, bool isPanels);
  void Release();

  // The pointer that the frame asks for, for a mouse that is not the panels'.
  void ShowCursor(int cursor);

 private:
  static constexpr int kCursors = 12;

  bool isPressed = false;
  SDL_Cursor* made[kCursors] = {};
};

}  // namespace sim
