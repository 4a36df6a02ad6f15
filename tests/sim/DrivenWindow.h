// vyra-sim with a window on a display of its own, driven as a user does: with a mouse and a keyboard.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "SimulatorRun.h"

class DrivenWindow {
 public:
  // Flies over a simulator folder, with further arguments, until Close. Throws when there is no window after
  // a while.
  DrivenWindow(const SimulatorFolder& folder, const std::vector<std::string>& arguments);
  ~DrivenWindow();
  DrivenWindow(const DrivenWindow&) = delete;
  DrivenWindow& operator=(const DrivenWindow&) = delete;

  // A widget goes by the name that the window tells it by, as sim/window/WidgetPlaces.h has it. Each throws
  // when there is no such widget after a while.
  void Click(const std::string& widget) const;
  void Press(const std::string& widget) const;
  void Release() const;
  // Clicks it, goes elsewhere and clicks there, faster than frames are drawn.
  void ClickAndGoOn(const std::string& widget, int x, int y) const;
  // Clicks it, and types over what is in it.
  void Enter(const std::string& widget, const std::string& text) const;

  // A key by its name in X, as in "Return" and "ctrl+3".
  void Key(const std::string& key) const;
  // Pixels from the window's left and top.
  void MoveMouse(int x, int y) const;

  // Waits until the simulator has told this behind what was awaited before. Throws when it did not after a
  // while.
  void Await(const std::string& text);
  // Waits until a widget is no longer drawn, as a menu that was closed. Throws when it is after a while.
  void AwaitGone(const std::string& widget) const;

  // Asks for the flight's end; the run that came of it.
  SimulatorRun Close();

 private:
  struct Corner {
    int x;
    int y;
    bool operator==(const Corner&) const = default;
  };

  std::optional<Corner> Find(const std::string& widget) const;  // its middle
  Corner MiddleOf(const std::string& widget) const;     // as soon as there is one, and all stands still
  std::string MoveTo(const std::string& widget) const;  // as xdotool is told
  void Do(const std::string& deeds) const;
  void StartDisplay();
  void Fly(const SimulatorFolder& folder, std::vector<std::string> arguments);

  std::filesystem::path files;
  std::string display;
  pid_t server = 0;
  pid_t simulator = 0;
  std::size_t seen = 0;  // of what was told
};
