// The state of the simulated world. The library's services and accessors are plain functions, so what they
// show stands in one named global.
#pragma once

#include <string>

#include "world/AircraftMotion.h"

namespace sim {

struct World {
  std::string systemPath;  // ends in "/"
  std::string modelPath;   // of plane 0; empty while no aircraft is loaded
  AircraftMotion aircraft;
  double elapsedSeconds = 0.0;
  int frame = 0;  // 0 before the first
};

inline World gWorld;

}  // namespace sim
