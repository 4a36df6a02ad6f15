// The wind: the same everywhere.
#pragma once

#include "world/Angles.h"
#include "world/Vector.h"

namespace sim::world {

struct Weather {
  double windFrom = 270.0;  // degrees true
  double windSpeed = 0.0;   // metres per second

  // Where the air moves to: north, east, down, in metres per second.
  Vector Wind() const {
    const double from = ToRadians(windFrom);
    return {-windSpeed * std::cos(from), -windSpeed * std::sin(from), 0.0};
  }
};

}  // namespace sim::world
