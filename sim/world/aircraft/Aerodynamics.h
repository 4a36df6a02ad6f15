// The forces of the air and of the engine.
#pragma once

#include "world/aircraft/AircraftDescription.h"
#include "world/aircraft/Motion.h"

namespace sim::world {

// A force in newtons and the moment that it has about the centre of mass, in newton metres. Body axes.
struct Push {
  Vector force;
  Vector moment;
};

// airVelocity: of the aircraft through the air, body axes. Enters airspeed, angles, lift and drag in forces,
// from which it reads the density.
Push AirForces(const AircraftDescription& description, const Controls& controls, const Vector& airVelocity,
               const Vector& rates, Forces& forces);

// Enters thrust and the fuel flow in forces; airspeed and density must stand there.
Push EngineForce(const AircraftDescription& description, double throttle, bool hasFuel, Forces& forces);

}  // namespace sim::world
