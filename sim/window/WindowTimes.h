// How the window keeps up with the flight.
#pragma once

namespace sim {

struct WindowTimes {
  int shownFrames = 0;          // since the flight began
  double shownPerSecond = 0.0;  // over the last second or so
  double flownPerSecond = 0.0;
};
inline WindowTimes gWindowTimes;

}  // namespace sim
