// The ground: a flat projection of the earth onto local metres, and hills on it.
#pragma once

#include <array>
#include <optional>

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

struct Ground {
  double height;                 // metres
  std::array<double, 3> normal;  // a unit vector, out of the ground
  bool isWet;
};

// The ground above or below a point; nothing beyond the world's edge.
std::optional<Ground> GroundAt(double x, double z);

}  // namespace sim
