// A ship with a flat deck to land on. She sails in a circle, at a steady speed, for ever.
#pragma once

#include <optional>

#include "world/earth/Earth.h"

namespace sim::world {

class Deck {
 public:
  static constexpr double kLength = 240.0;  // metres
  static constexpr double kWidth = 44.0;
  static constexpr double kHeight = 16.0;  // above the sea
  static constexpr double kSpeed = 8.0;    // metres per second
  static constexpr double kCourseRadius = 4'000.0;

  // centre: of the course.
  explicit Deck(const Place& centreOfCourse);

  void SetTime(double seconds);

  const Place& Position() const { return position; }  // of the deck's middle
  double Heading() const { return heading; }          // degrees
  bool Covers(const Place& place) const;

  // How the deck moves at a place on it, in metres per second: its outer side moves faster.
  GroundOffset VelocityAt(const Place& place) const;

 private:
  Place centre;
  Place position;
  double heading = 90.0;
};

}  // namespace sim::world
