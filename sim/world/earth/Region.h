// A part of the earth between two parallels and two meridians, all in degrees. It never crosses the meridian
// at 180 degrees.
#pragma once

#include "world/earth/Earth.h"

namespace sim::world {

struct Region {
  double south = -90.0;
  double north = 90.0;
  double west = -180.0;
  double east = 180.0;

  // False for coordinates that are no numbers.
  bool Contains(const Place& place) const {
    return place.latitude >= south && place.latitude <= north && place.longitude >= west &&
           place.longitude <= east;
  }
};

}  // namespace sim::world
