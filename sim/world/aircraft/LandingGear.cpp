// Each wheel is a linear spring and damper along the ground's normal, and friction of Coulomb's kind across
// it, made smooth around rest: B. Stevens, F. Lewis, Aircraft Control and Simulation, second edition, 2003,
// leaves this part to the reader; coefficients of friction are those of tyres on dry concrete in D. Raymer,
// Aircraft Design: A Conceptual Approach, fourth edition, 2006, table 17.1.
#include "world/aircraft/LandingGear.h"

#include <algorithm>
#include <limits>

#include "world/Angles.h"

namespace sim::world {
namespace {

constexpr double kRolling = 0.03;  // coefficients of friction
constexpr double kBraking = 0.5;
constexpr double kSideways = 0.7;
constexpr double kSmoothSpeed = 0.3;  // metres per second, below which friction fades
constexpr double kGravity = 9.81;

// From the axes of the ground (east, up, south) to those of the earth (north, east, down).
Vector ToEarth(const Vector& ground) { return {-ground.z, ground.x, -ground.y}; }

double Friction(double speed) { return std::clamp(speed / kSmoothSpeed, -1.0, 1.0); }

// The force on a wheel, earth axes; no force where it does not touch. The ground is a plane here.
Vector ForceOn(const Wheel& wheel, const Controls& controls, const Motion& motion, const Ground& ground) {
  const Vector normal = ToEarth(ground.normal);
  const Vector arm = motion.attitude.ToEarth(wheel.position);
  const Vector overGround = arm - Vector{0.0, 0.0, motion.place.altitude - ground.altitude};
  const double depth = -Dot(overGround, normal);
  if (depth <= 0.0) return {};

  const Vector velocity = motion.velocity + motion.attitude.ToEarth(Cross(motion.rates, wheel.position)) -
                          ToEarth(ground.velocity);
  const double sinking = -Dot(velocity, normal);
  const double load = std::max(0.0, wheel.spring * depth + wheel.damper * sinking);

  const double steering = ToRadians(wheel.steeringDegrees) * controls.rudder;
  const Vector nose = motion.attitude.ToEarth({std::cos(steering), std::sin(steering), 0.0});
  const Vector across = Cross(normal, nose);  // to the left
  if (Length(across) < 1e-6) return load * normal;
  const Vector side = Unit(across);
  const Vector ahead = Cross(side, normal);
  const double grip = kRolling + (wheel.hasBrake ? kBraking * controls.brake : 0.0);
  return load * (normal + -grip * Friction(Dot(velocity, ahead)) * ahead +
                 -kSideways * Friction(Dot(velocity, side)) * side);
}

}  // namespace

Push GearForces(const AircraftDescription& description, const Controls& controls, const Motion& motion,
                const Ground& ground, Forces& forces) {
  Push sum;
  forces.wheelsOnGround = 0;
  for (const Wheel& wheel : description.wheels) {
    const Vector force = motion.attitude.ToBody(ForceOn(wheel, controls, motion, ground));
    if (Dot(force, force) == 0.0) continue;
    ++forces.wheelsOnGround;
    sum.force += force;
    sum.moment += Cross(wheel.position, force);
  }
  return sum;
}

double StandingHeight(const AircraftDescription& description, double mass) {
  double lowest = 0.0;
  double springs = 0.0;
  for (const Wheel& wheel : description.wheels) {
    lowest = std::max(lowest, wheel.position.z);
    springs += wheel.spring;
  }
  return springs > 0.0 ? lowest - mass * kGravity / springs : lowest;
}

}  // namespace sim::world
