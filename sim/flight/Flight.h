// A flight: what the simulator does at which frame, and what must be true then. Read from a JSON file, whose
// format sim/README.md describes.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/DataRefValue.h"

namespace sim {

// Steps. Paths are full ones.
struct LoadAircraft {
  std::string modelPath;
};
struct UnloadAircraft {};
struct LoadScenery {
  std::string folder;  // ends in "/"
};
struct SendMessage {
  std::string signature;
  int message = 0;
  std::optional<std::string> text;  // the parameter; null without it
};
struct BroadcastEvent {
  int event = 0;
};
struct WriteValue {
  std::string dataRef;
  DataRefValue value;
};
struct Click {
  int x = 0;
  int y = 0;
};
struct PressKey {
  char key = 0;
  int flags = 0;
};
struct PickItem {
  std::string way;  // "Plugins/Clock/Show window"
};
struct UseCommand {
  std::string name;
  int passes = 1;  // for which it is held
};

using Action = std::variant<LoadAircraft, UnloadAircraft, LoadScenery, SendMessage, BroadcastEvent,
                            WriteValue, Click, PressKey, PickItem, UseCommand>;

struct Step {
  int frame;  // carried out before the frame
  Action action;
};

// Expectations.
struct LogContains {
  std::string text;
  std::optional<int> times;  // exactly; without it, at least once
};
struct LogLacks {
  std::string text;
};
struct DataRefIs {
  enum class Comparison { Equals, AtLeast, Contains, Absent };
  std::string dataRef;
  std::optional<int> index;  // into an array
  Comparison comparison;
  DataRefValue value;
};
struct PluginCount {
  int count;  // the simulator included
};
struct PluginIs {
  enum class State { Loaded, Enabled, Disabled, Absent };
  std::string signature;
  State state;
};
struct ScreenHas {
  std::string text;
  bool wanted;  // or that it lacks it
};
struct MenuItemIs {
  std::string way;
  std::string state;
};
struct CameraIs {
  bool ofPlugin;  // or the simulator's own
  std::optional<double> zoom;
};
struct PlanesHeldBy {
  std::string owner;  // a plugin's signature, or empty for the simulator
};
struct ObjectsLoaded {
  int count;
};

using Claim = std::variant<LogContains, LogLacks, DataRefIs, PluginCount, PluginIs, ScreenHas, MenuItemIs,
                           CameraIs, PlanesHeldBy, ObjectsLoaded>;

struct Expectation {
  int frame;  // checked after the frame; or a moment behind the last (report/Moment.h)
  Claim claim;
};

struct Flight {
  std::vector<Step> steps;                // in the order of their frames
  std::vector<Expectation> expectations;  // likewise
};

// Reads a flight of `frames` frames over a simulator folder, which ends in "/". Throws InputError, also when
// a step or an expectation lies behind the last frame or names a file that does not exist.
Flight ReadFlight(const std::string& fileName, const std::string& systemPath, int frames);

}  // namespace sim
