// The window of a flight that is flown by hand: its OpenGL context, its pace, what the user does in it, and
// what is drawn over the flight's picture.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "window/FramePacer.h"
#include "window/KeyInput.h"
#include "window/MouseInput.h"
#include "window/PacedInput.h"

struct SDL_Window;
struct SDL_WindowEvent;

namespace sim {

class UserInterface;

class FlightWindow {
 public:
  // Opens it, as large as the screen, and makes its context the current one. Throws InputError when there is
  // no display, or no OpenGL with the fixed functions.
  // stateFolder: where it is remembered how the panels lay; empty for nowhere.
  FlightWindow(double frameRate, const std::string& stateFolder);
  ~FlightWindow();
  FlightWindow(const FlightWindow&) = delete;
  FlightWindow& operator=(const FlightWindow&) = delete;

  // Before each frame: waits until it is due, and takes what the user did since the last time. False when the
  // user closed the window. Of the frames that are due together only the last is painted.
  bool BeginFrame();

  // The frame was drawn. If it is to be seen, draws what lies over it, and shows it.
  void EndFrame();

  // Shows nothing but this, which is drawn with Dear ImGui. Not while a frame is drawn.
  void ShowAlone(const std::function<void()>& contents);

  // Shows it until it answers true. False when the user closed the window before, or the flight is asked to
  // end. The time that the user takes counts as nobody's.
  bool ShowUntil(const std::function<bool()>& contents);

 private:
  void Open();
  void TakeInput();
  void Take(const SDL_WindowEvent& event);
  void FitScreen();
  void ShowFrame();
  void TellTimes();

  SDL_Window* window = nullptr;
  void* context = nullptr;
  std::unique_ptr<UserInterface> userInterface;
  PacedInput input;
  KeyInput keys;
  MouseInput mouse;
  std::optional<FramePacer> pacer;  // from the first frame on
  double rate;
  int framesDue = 0;  // with the one that is flown
  bool isClosed = false;
  bool isHidden = false;

  // Of the second or so that gWindowTimes speaks of.
  int shownInSecond = 0;
  int flownInSecond = 0;
  std::chrono::steady_clock::time_point secondBegan{};
};

}  // namespace sim
