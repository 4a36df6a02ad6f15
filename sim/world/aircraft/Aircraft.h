// The user's aircraft: a rigid body in the air and on the ground.
#pragma once

#include <optional>

#include "world/aircraft/AircraftDescription.h"
#include "world/aircraft/Autopilot.h"
#include "world/aircraft/Motion.h"
#include "world/aircraft/Weather.h"
#include "world/terrain/Terrain.h"

namespace sim::world {

class Aircraft {
 public:
  // What it is, and how it flies; both may be changed at any time.
  AircraftDescription description;
  Controls controls;
  Autopilot autopilot;
  Motion motion;

  // In flight over home, as every flight begins.
  Aircraft();

  // Moves on by so much simulated time, in equal steps of at most 1/120 s.
  void Advance(double seconds, const Terrain& terrain, const Weather& weather);

  // Set down at rest on its wheels, with the engine idle and all holds off.
  void PutOnGround(const Place& place, double heading, const Terrain& terrain);

  // In level flight at a speed in metres per second, and without damage.
  void PutInFlight(const Place& place, double heading, double speed);

  EulerAngles Angles() const { return motion.attitude.Angles(); }
  double Climb() const { return -motion.velocity.z; }  // metres per second
  double GroundSpeed() const { return std::hypot(motion.velocity.x, motion.velocity.y); }
  const Forces& Now() const { return forces; }
  double HeightAboveGround() const { return heightAboveGround; }  // of the centre of mass, metres
  bool IsOnGround() const { return forces.wheelsOnGround > 0; }

  // It lies where it hit the ground or the water, until it is put somewhere else.
  bool HasCrashed() const { return hasCrashed; }
  void SetCrashed(bool crashed) { hasCrashed = crashed; }

 private:
  void Step(double seconds, const Terrain& terrain, const Vector& wind);
  bool HitsTooHard(const Ground& ground) const;
  void Stop(double altitude);

  Forces forces;
  double heightAboveGround = 0.0;
  bool hasCrashed = false;
};

}  // namespace sim::world
