// What a flight file may say of the flight itself, beside its steps and expectations.
#pragma once

#include <string>
#include <vector>

#include "flight/Key.h"

namespace sim {

constexpr double kMinRate = 1.0;
constexpr double kMaxRate = 1000.0;

const std::vector<Key>& FlightKeys();

// As the file has it. What stands on the command line counts before it.
struct FlightSettings {
  int frames = 0;                    // 0: not said
  double rate = 0.0;                 // 0: not said
  std::string systemPath;            // empty: not said
  std::vector<std::string> plugins;  // patterns, as of --only; empty: all
};

// Throws InputError.
FlightSettings ReadFlightSettings(const std::string& fileName);

}  // namespace sim
