// The window of a flight that is flown by hand: its OpenGL context, what the user does in it, and what is
// drawn over the flight's picture.
#pragma once

#include <memory>
#include <string>

struct SDL_Window;

namespace sim {

class UserInterface;

class FlightWindow {
 public:
  // Opens it, as large as the screen, and makes its context the current one. Throws InputError when there is
  // no display, or no OpenGL with the fixed functions.
  // stateFolder: where it is remembered how the panels lay; empty for nowhere.
  explicit FlightWindow(const std::string& stateFolder);
  ~FlightWindow();
  FlightWindow(const FlightWindow&) = delete;
  FlightWindow& operator=(const FlightWindow&) = delete;

  // Between two frames: takes what the user did since the last time. False when the user closed the window.
  bool TakeInput();

  // The frame was drawn: draws what lies over it, and shows it.
  void Present();

 private:
  SDL_Window* window = nullptr;
  void* context = nullptr;
  std::unique_ptr<UserInterface> userInterface;
};

}  // namespace sim
