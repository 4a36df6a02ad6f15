// Dear ImGui over the flight's picture: the menu bar and the panels.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "window/OpenPanels.h"

union SDL_Event;
struct SDL_Window;

namespace sim {

class UserInterface {
 public:
  // The window's OpenGL context is the current one, now and whenever something here is called.
  // stateFolder: where it is remembered how the panels lay; empty for nowhere.
  UserInterface(SDL_Window* theWindow, void* openGlContext, const std::string& stateFolder);
  ~UserInterface();
  UserInterface(const UserInterface&) = delete;
  UserInterface& operator=(const UserInterface&) = delete;

  // Of everything that happens to the window. The result is whether it is the interface's alone: a click on a
  // panel, a letter typed into one.
  bool Take(const SDL_Event& event);

  // Whether the mouse is over a panel or held by one.
  bool HasMouse() const;

  // Draws over what is in the window. What a panel's buttons do happens here, between two frames of the
  // flight.
  void Draw();

  // Likewise, this and nothing else.
  void DrawAlone(const std::function<void()>& contents);

  void TogglePanel(int key);

 private:
  // As of the events that were taken: the system may already be ahead of them.
  struct Mouse {
    int x = 0;
    int y = 0;
    bool isOutside = true;
    std::array<bool, 3> isDown{};
  };

  void FitToDisplay();
  void Follow(const SDL_Event& event);
  void PlaceMouse() const;

  SDL_Window* window;
  float density = 0.0F;  // nothing is made for it yet
  float pixelsPerPoint = 0.0F;
  Mouse mouse;
  std::optional<OpenPanels> panels;
};

}  // namespace sim
