// A user's hands in the window of a flight: what is touched goes by the names that the window tells of its
// widgets, as sim/window/WidgetPlaces.h has them. Each function throws when something does not come after a
// while.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "WindowedFlight.h"

class Hands {
 public:
  // The flight begins, and the window is there.
  Hands(const OwnDisplay& display, const std::filesystem::path& systemFolder,
        const std::vector<std::string>& arguments = {});

  void Click(const std::string& widget) const;
  void Press(const std::string& widget) const;
  void Release() const;
  // Clicks it, goes elsewhere and clicks there, faster than frames are drawn.
  void ClickAndGoOn(const std::string& widget, int x, int y) const;
  // Clicks it, types over what is in it, and sees the whole text there.
  void Enter(const std::string& widget, const std::string& text) const;

  // A key by its name in X, as in "Return" and "ctrl+3".
  void Key(const std::string& key) const;
  // Pixels from the window's left and top.
  void MoveMouse(int x, int y) const;

  // Waits until the simulator or a plugin has told this behind what was awaited before.
  void Await(const std::string& text);
  // Waits until a widget is no longer drawn, as a menu that was closed.
  void AwaitGone(const std::string& widget) const;

  // Closes the window; the exit code of the flight.
  int Close();

  std::string Output() const { return flight.Output(); }
  std::string Log() const { return flight.Log(); }

 private:
  struct Corner {
    int x;
    int y;
    bool operator==(const Corner&) const = default;
  };
  // A frame that was drawn: its number, and a widget's middle in it.
  struct Seen {
    int frame = 0;
    std::optional<Corner> middle;
  };

  Seen See(const std::string& widget) const;
  void AwaitThat(const std::string& what, const std::function<bool()>& isSo) const;
  Corner MiddleOf(const std::string& widget) const;  // as soon as it stands still
  std::vector<std::string> MoveTo(const std::string& widget) const;
  void Do(std::vector<std::string> deeds, const std::vector<std::string>& more) const;

  std::filesystem::path widgets;
  WindowedFlight flight;
};
