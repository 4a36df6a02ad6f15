// The state of the simulated world. The library's services and accessors are plain functions, so what they
// show stands in one named global.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "Activity.h"
#include "AircraftMotion.h"

namespace sim {

class Log;

struct World {
  std::string systemPath;  // ends in "/"
  std::string modelPath;   // of plane 0; empty while no aircraft is loaded
  AircraftMotion aircraft;
  double elapsedSeconds = 0.0;
  int frame = 0;                       // 0 before the first
  int reloads = 0;                     // of the plugins
  std::array<char, 64> buildString{};  // of the library, terminated
  int mouseX = 0;                      // pixels, y upward
  int mouseY = 0;
  Activity activity;
  std::vector<std::string> news;  // what to tell the reader at the end of this frame
  Log* log = nullptr;
};

inline World gWorld;

}  // namespace sim
