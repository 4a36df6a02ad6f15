// An aircraft that the simulator flies itself, on and on around a rectangle, until somebody else moves it.
#pragma once

#include <array>
#include <string>

#include "world/aircraft/Attitude.h"
#include "world/earth/Earth.h"

namespace sim::world {

class AiPlane {
 public:
  std::string modelPath;
  bool isFlownBySimulator = true;

  // Where it is; to be written by whoever flies it in the simulator's place.
  Place place;
  EulerAngles angles;
  double speed = 45.0;  // metres per second

  AiPlane() = default;

  // Begins at a corner of a circuit around a place, whose altitude is that of the circuit.
  explicit AiPlane(const Place& middleOfCircuit);

  // Flies on for so many seconds: from wherever it is, towards the next corner.
  void Advance(double seconds);

 private:
  std::array<Place, 4> corners{};
  std::size_t nextCorner = 1;
};

}  // namespace sim::world
