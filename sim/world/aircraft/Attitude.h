// How a body is turned: a unit quaternion from its own axes (x forward, y right, z down) to those of the
// place where it is (x north, y east, z down).
//
// B. Stevens, F. Lewis, Aircraft Control and Simulation, second edition, 2003, section 1.3.
#pragma once

#include "world/Vector.h"

namespace sim::world {

// Degrees: the usual three angles, heading first, then pitch, then roll.
struct EulerAngles {
  double heading = 0.0;  // 0 to 360
  double pitch = 0.0;    // up is positive
  double roll = 0.0;     // to the right is positive
};

class Attitude {
 public:
  Attitude() = default;
  explicit Attitude(const EulerAngles& angles);

  EulerAngles Angles() const;

  Vector ToEarth(const Vector& body) const;
  Vector ToBody(const Vector& earth) const;

  // Turned on for a while at body rates, in radians per second.
  void Turn(const Vector& rates, double seconds);

 private:
  double w = 1.0;
  Vector v;
};

}  // namespace sim::world
