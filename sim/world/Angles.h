// Degrees are what people and plugins see; radians are what is computed with.
#pragma once

#include <cmath>
#include <numbers>

namespace sim::world {

constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;

constexpr double ToRadians(double degrees) { return degrees * kRadiansPerDegree; }
constexpr double ToDegrees(double radians) { return radians / kRadiansPerDegree; }

// The same direction, from 0 up to but not including 360.
inline double NormalHeading(double degrees) {
  const double remainder = std::fmod(degrees, 360.0);
  const double positive = remainder < 0.0 ? remainder + 360.0 : remainder;
  return positive < 360.0 ? positive : 0.0;  // a tiny negative remainder rounds up to 360
}

// The way from one heading to another by the shorter turn, -180 to 180.
inline double TurnBetween(double from, double to) { return std::remainder(to - from, 360.0); }

}  // namespace sim::world
