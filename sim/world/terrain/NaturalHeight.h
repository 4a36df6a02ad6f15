// The shape of the land before anybody built on it: the same on every machine and in every run.
#pragma once

#include "world/earth/Region.h"

namespace sim::world {

// Where there is a world: some 450 km across. Beyond it there is nothing.
constexpr Region kWorldRegion{.south = 52.3, .north = 56.3, .west = 6.6, .east = 13.6};

// The place where a flight begins, and around which local metres lie: at sea level.
constexpr Place kHome{.latitude = 54.3, .longitude = 10.1, .altitude = 0.0};

struct Height {
  double metres;      // above the ellipsoid; below 0 on the bottom of the sea
  double northSlope;  // metres that it rises for each metre to the north
  double eastSlope;
};

// Smooth everywhere, together with its slopes.
Height NaturalHeightAt(const Place& place);

}  // namespace sim::world
