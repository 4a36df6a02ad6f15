// The report at the end of a flight.
#pragma once

#include <vector>

#include "Activity.h"
#include "PluginList.h"

namespace sim {

struct FlightReport {
  std::vector<PluginInfo> plugins;  // as they were just before the shutdown
  int frames = 0;
  double rate = 0.0;  // frames per simulated second
  int passes = 0;     // as the library counted them
  int warnings = 0;   // in the log, the shutdown included
  int held = 0;       // expectations
  Activity activity;
  int failures = 0;                     // expectations and steps
  std::vector<float> passMicroseconds;  // wall time of each pass
};

// Prints it on standard output. Reorders the times.
void PrintSummary(FlightReport& report);

}  // namespace sim
