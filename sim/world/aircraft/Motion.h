// How an aircraft moves, and what moves it. Vectors named earth point north, east and down at the aircraft's
// place; vectors named body point forward, right and down in the aircraft.
#pragma once

#include "world/aircraft/Attitude.h"
#include "world/earth/Earth.h"

namespace sim::world {

// What a pilot or a plugin sets.
struct Controls {
  double throttle = 0.5;  // 0 to 1
  double elevator = 0.0;  // -1 to 1, nose up
  double aileron = 0.0;   // -1 to 1, roll right
  double rudder = 0.0;    // -1 to 1, yaw right
  double brake = 0.0;     // 0 to 1
  double trim = 0.0;      // -1 to 1, added to the elevator
};

struct Motion {
  Place place;
  Vector velocity;  // earth, metres per second over the ground
  Attitude attitude;
  Vector rates;        // body, radians per second: roll, pitch, yaw
  double fuel = 80.0;  // kilograms
};

// What acts at the moment, for instruments. Forces in newtons.
struct Forces {
  double airspeed = 0.0;       // metres per second, true
  double angleOfAttack = 0.0;  // radians
  double sideslip = 0.0;
  double airDensity = 0.0;  // kilograms per cubic metre
  double lift = 0.0;
  double drag = 0.0;
  double thrust = 0.0;
  double mass = 0.0;      // kilograms
  double fuelFlow = 0.0;  // kilograms per second
  bool isStalled = false;
  int wheelsOnGround = 0;
  double loadFactor = 1.0;  // felt by the pilot, in units of gravity
};

}  // namespace sim::world
