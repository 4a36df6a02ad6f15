// What can be seen of the scene at all.
#pragma once

#include <array>

#include "world/Vector.h"

namespace sim {

// A ball around something, in local metres.
struct Bounds {
  world::Vector middle;
  double radius = 0.0;
};

class Frustum {
 public:
  // As the current context's matrices are now.
  Frustum();

  // False only when nothing of it can be seen.
  bool MayShow(const Bounds& bounds) const;

 private:
  struct Plane {
    world::Vector normal;  // inward, of length 1
    double distance;       // of the origin from it
  };
  std::array<Plane, 4> sides;
};

}  // namespace sim
