// The ground: a flat projection of the earth onto local metres, and hills on it.
#pragma once

#include "VYRAHost.h"

namespace sim {

// Local metres: x to the east, y upward, z to the south of where a flight begins.
struct LocalPoint {
  double x;
  double y;
  double z;
};

struct WorldPoint {
  double latitude;  // degrees
  double longitude;
  double altitude;  // metres
};

LocalPoint ToLocal(WorldPoint point);
WorldPoint ToWorld(LocalPoint point);

void FillTerrainServices(VYRAHostServices& services);

}  // namespace sim
