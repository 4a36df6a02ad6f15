// A flight in a real window, on a display of its own, in which xdotool is the user. Nothing waits for some
// time: whoever acts waits first until the simulator or a plugin has told of what went before.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

// An X server without a screen to look at, for as long as this lasts.
class OwnDisplay {
 public:
  explicit OwnDisplay(int width = 640, int height = 480);
  ~OwnDisplay();
  OwnDisplay(const OwnDisplay&) = delete;
  OwnDisplay& operator=(const OwnDisplay&) = delete;

  const std::string& Name() const { return name; }  // ":3"
  int Width() const { return width; }
  int Height() const { return height; }

 private:
  int width;
  int height;
  pid_t server = 0;
  std::string name{":"};
};

class WindowedFlight {
 public:
  // Starts "vyra-sim run --window" over a simulator folder, with further arguments. The window fills the
  // display at first. Its panels and the end of a flight are remembered in the folder `state` there.
  WindowedFlight(const OwnDisplay& display, const std::filesystem::path& systemFolder,
                 const std::vector<std::string>& arguments = {});
  ~WindowedFlight();
  WindowedFlight(const WindowedFlight&) = delete;
  WindowedFlight& operator=(const WindowedFlight&) = delete;

  // Waits until standard output or the log has a text behind the place where it stood last when waited for.
  // Fails the test, with all that was said until then, when it does not come, and is false then.
  bool WaitFor(const std::string& text);
  // Waits until the window is there and has the keyboard.
  bool WaitForWindow();

  // What xdotool is to do, as on its command line. Places are pixels of the display, y downward.
  void Act(const std::string& words) const;
  void Act(std::vector<std::string> words) const;
  // Presses the window's close button.
  void Close() const;

  // Waits for the end; the result is the exit code.
  int End();

  std::string Output() const;
  std::string Log() const;

 private:
  std::string Told() const;
  unsigned long Window() const;  // 0 while there is none

  const OwnDisplay& display;
  std::filesystem::path files;
  pid_t simulator = 0;
  std::size_t outputSeen = 0;
  std::size_t logSeen = 0;
};
