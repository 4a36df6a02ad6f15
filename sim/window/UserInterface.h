// Dear ImGui over the flight's picture: the menu bar and the panels.
#pragma once

union SDL_Event;
struct SDL_Window;

namespace sim {

class UserInterface {
 public:
  // The window's OpenGL context is the current one, now and whenever something here is called.
  UserInterface(SDL_Window* window, void* openGlContext);
  ~UserInterface();
  UserInterface(const UserInterface&) = delete;
  UserInterface& operator=(const UserInterface&) = delete;

  // Of everything that happens to the window. The result is whether it is the interface's alone: a click on a
  // panel, a letter typed into one.
  bool Take(const SDL_Event& event);

  // Draws over what is in the window. What a panel's buttons do happens here, between two frames of the
  // flight.
  void Draw();

  void TogglePanel(int key);
};

}  // namespace sim
