// From where the scene is seen, and where the sun stands in it.
#pragma once

namespace sim {

// In local metres and degrees: x to the east, y up, z to the south; heading from north to the east, pitch
// upward, roll to the right.
struct View {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double pitch = 0.0;
  double heading = 0.0;
  double roll = 0.0;
  double zoom = 1.0;
};

}  // namespace sim
