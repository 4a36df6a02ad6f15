// The wheels on the ground: springs, brakes and what holds an aircraft on its track.
#pragma once

#include "world/aircraft/Aerodynamics.h"
#include "world/terrain/Terrain.h"

namespace sim::world {

// Enters the number of wheels on the ground in forces.
Push GearForces(const AircraftDescription& description, const Controls& controls, const Motion& motion,
                const Ground& ground, Forces& forces);

// Metres from the lowest wheel to the centre of mass, when the aircraft stands with its weight on its wheels.
double StandingHeight(const AircraftDescription& description, double mass);

}  // namespace sim::world
