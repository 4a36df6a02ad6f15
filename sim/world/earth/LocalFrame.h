// Local metres: a right-handed frame around a reference place on the ellipsoid. There, x points east, y up
// and z south; the axes are straight, so that far from the reference the earth falls away below them: at
// 50 km, sea level lies at y = -196 m.
#pragma once

#include <GeographicLib/LocalCartesian.hpp>

#include "world/Vector.h"
#include "world/earth/Earth.h"

namespace sim::world {

class LocalFrame {
 public:
  // The origin lies at sea level, whatever the altitude of the reference.
  explicit LocalFrame(const Place& reference);

  Place Reference() const;

  Vector ToLocal(const Place& place) const;
  Place ToPlace(const Vector& local) const;

  // The directions of a place as unit vectors in local metres.
  struct Directions {
    Vector east;
    Vector up;
    Vector north;
  };
  Directions DirectionsAt(const Place& place) const;

 private:
  GeographicLib::LocalCartesian cartesian;  // whose y points north and z up
  double sineOfReference;                   // of its latitude
  double cosineOfReference;
};

}  // namespace sim::world
