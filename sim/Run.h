// The simulator: starts the library over a simulator folder, flies the frames and shuts it down.
#pragma once

#include <string>

namespace sim {

struct FlightOptions {
  std::string systemPath;  // with or without a "/" at its end
  int frames = 0;
  double rate = 0.0;       // frames per simulated second
  std::string logFile;     // empty: standard error
  std::string flightFile;  // empty: nothing happens but the frames
  bool realTime = false;   // rather than as fast as possible
};

// Flies once per process. Returns whether everything expected happened; throws InputError.
bool Fly(const FlightOptions& options);

}  // namespace sim
