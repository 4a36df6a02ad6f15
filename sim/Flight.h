// A flight: what the simulator does at which frame, and what must be true then. Read from a JSON file, whose
// format sim/README.md describes.
#pragma once

#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "DataRefValue.h"

namespace sim {

constexpr int kMaxFrames = 10'000'000;

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

using Action =
    std::variant<LoadAircraft, UnloadAircraft, LoadScenery, SendMessage, BroadcastEvent, WriteValue>;

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

using Claim = std::variant<LogContains, LogLacks, DataRefIs, PluginCount, PluginIs>;

constexpr int kAtEnd = std::numeric_limits<int>::max() - 1;
constexpr int kAfterShutdown = std::numeric_limits<int>::max();

struct Expectation {
  int frame;  // checked after the frame; or one of the two above
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
