// Models put together from boxes and bodies, for what has no file of its own.
#pragma once

#include "world/scenery/ObjectModel.h"

namespace sim {

// A light aeroplane, for aircraft without a model; its nose points to -z.
world::ObjectModel PlainAircraft();

// The ship: the middle of its deck is at the origin, and its bow points to -z.
world::ObjectModel ShipModel();

}  // namespace sim
