// What the command line asks for.
#pragma once

#include <string>

#include "report/CostOptions.h"

namespace sim {

struct FlightOptions {
  std::string systemPath;  // with or without a "/" at its end
  int frames = 0;
  double rate = 0.0;       // frames per simulated second
  std::string logFile;     // empty: standard error
  std::string flightFile;  // empty: nothing happens but the frames
  std::string reportFile;  // empty: none
  std::string junitFile;   // likewise
  bool realTime = false;   // rather than as fast as possible
  CostOptions costs;
  bool isSupervised = true;
  double stallLimit = 0.0;  // seconds that a call into a plugin may take; 0 for any
  bool wantsCore = false;   // a flight that crashes leaves a core file
  std::string stateFolder;  // where a bad end is remembered; empty: nowhere
};

}  // namespace sim
