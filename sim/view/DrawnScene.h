// What stands in the picture of the frame that was drawn last, other than on the screen's surface: objects
// and aircraft, each where it was drawn.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "world/Vector.h"
#include "world/aircraft/Attitude.h"
#include "world/scenery/ObjectModel.h"

namespace sim {

struct DrawnObject {
  std::shared_ptr<const world::ObjectModel> model;
  world::Vector position;  // local metres
  world::EulerAngles angles;
  int lighting;
  bool isEarthRelative;
};

struct DrawnPlane {
  int plane;
  world::Vector position;  // local metres
  world::EulerAngles angles;
  bool isFull;
  bool isByPlugin;  // or by the simulator
};

struct DrawnScene {
  std::vector<DrawnObject> objects;
  std::vector<DrawnPlane> planes;
};

inline DrawnScene gDrawnScene;

}  // namespace sim
