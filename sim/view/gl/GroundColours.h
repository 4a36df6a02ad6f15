// What land and sea look like from above.
#pragma once

#include <array>

#include "world/Vector.h"

namespace sim {

using GroundColour = std::array<float, 3>;  // red, green, blue, 0 to 1

// Where the light comes from: a unit vector in local metres.
world::Vector Sunlight();

// east, north: metres on a map, by which fields and woods are told apart. grain: metres that a vertex stands
// for; finer patterns than that are left out. normal: of the ground.
GroundColour LandColour(double east, double north, double height, const world::Vector& normal, double grain);

// depth: of the water in metres.
GroundColour SeaColour(double east, double north, double depth);

}  // namespace sim
