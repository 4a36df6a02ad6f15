// Coefficients linear in the angles and rates: R. Nelson, Flight Stability and Automatic Control, second
// edition, 1998, chapters 2 and 3; rates are made dimensionless with the span or the chord over twice the
// airspeed. Drag that grows with the square of lift: J. Anderson, Introduction to Flight, seventh edition,
// 2012, section 5.14. Lift beyond the stall, blended into that of a flat plate: R. Beard, T. McLain, Small
// Unmanned Aircraft, 2012, section 4.2.3. Power of a propeller engine in proportion to the density of the
// air, and thrust as power over airspeed: Anderson, section 6.7.
#include "world/aircraft/Aerodynamics.h"

#include <algorithm>
#include <numbers>
#include <tuple>

#include "world/Angles.h"
#include "world/earth/Atmosphere.h"

namespace sim::world {
namespace {

constexpr double kStillAir = 0.1;         // metres per second, below which the air does nothing
constexpr double kSlowestForRates = 8.0;  // metres per second: rates have no more effect below than here
constexpr double kStallSharpness = 40.0;
constexpr double kJoulesPerKilowattHour = 3.6e6;

// 0 well below the stall, 1 well beyond it, on either side.
double PartStalled(double angle, double stallAngle) {
  const double below = std::exp(-kStallSharpness * (angle - stallAngle));
  const double above = std::exp(kStallSharpness * (angle + stallAngle));
  return (1.0 + below + above) / ((1.0 + below) * (1.0 + above));
}

double LiftCoefficient(const AircraftDescription::Lift& lift, double angle, double pitchRate, double elevator,
                       double stalled) {
  const double attached =
      lift.atNoAngle + lift.perAngle * angle + lift.perPitchRate * pitchRate + lift.perElevator * elevator;
  const double sine = std::sin(angle);
  const double flatPlate = 2.0 * std::copysign(sine * sine, angle) * std::cos(angle);
  return (1.0 - stalled) * attached + stalled * flatPlate;
}

double DragCoefficient(const AircraftDescription& description, double liftCoefficient, double angle,
                       double stalled) {
  const double aspectRatio = description.wing.span * description.wing.span / description.wing.area;
  const double induced =
      liftCoefficient * liftCoefficient / (std::numbers::pi * description.drag.efficiency * aspectRatio);
  const double sine = std::sin(angle);
  return description.drag.atNoLift + (1.0 - stalled) * induced + stalled * 2.0 * sine * sine;
}

Vector MomentCoefficients(const AircraftDescription& description, const Vector& surfaces, const Vector& rates,
                          double angle, double sideslip) {
  const auto& [roll, pitch, yaw] = std::tie(description.roll, description.pitch, description.yaw);
  return {roll.perSideslip * sideslip + roll.perRollRate * rates.x + roll.perYawRate * rates.z +
              roll.perAileron * surfaces.x + roll.perRudder * surfaces.z,
          pitch.atNoAngle + pitch.perAngle * angle + pitch.perPitchRate * rates.y +
              pitch.perElevator * surfaces.y,
          yaw.perSideslip * sideslip + yaw.perRollRate * rates.x + yaw.perYawRate * rates.z +
              yaw.perAileron * surfaces.x + yaw.perRudder * surfaces.z};
}

}  // namespace

Push AirForces(const AircraftDescription& description, const Controls& controls, const Vector& airVelocity,
               const Vector& rates, Forces& forces) {
  forces.airspeed = Length(airVelocity);
  forces.isStalled = false;
  forces.lift = 0.0;
  forces.drag = 0.0;
  if (forces.airspeed < kStillAir) {
    forces.angleOfAttack = 0.0;
    forces.sideslip = 0.0;
    return {};
  }
  const auto& [area, span, chord] = description.wing;
  const double angle = std::atan2(airVelocity.z, airVelocity.x);
  const double sideslip = std::asin(std::clamp(airVelocity.y / forces.airspeed, -1.0, 1.0));
  forces.angleOfAttack = angle;
  forces.sideslip = sideslip;

  const double stalled = PartStalled(angle, ToRadians(description.lift.stallDegrees));
  forces.isStalled = stalled > 0.5;
  const double twiceSpeed = 2.0 * std::max(forces.airspeed, kSlowestForRates);
  const Vector plainRates{rates.x * span / twiceSpeed, rates.y * chord / twiceSpeed,
                          rates.z * span / twiceSpeed};
  const Vector surfaces{controls.aileron * ToRadians(description.surfaces.aileronDegrees),
                        std::clamp(controls.elevator + controls.trim, -1.0, 1.0) *
                            ToRadians(description.surfaces.elevatorDegrees),
                        controls.rudder * ToRadians(description.surfaces.rudderDegrees)};

  const double push = 0.5 * forces.airDensity * forces.airspeed * forces.airspeed * area;
  const double liftCoefficient = LiftCoefficient(description.lift, angle, plainRates.y, surfaces.y, stalled);
  forces.lift = push * liftCoefficient;
  forces.drag = push * DragCoefficient(description, liftCoefficient, angle, stalled);
  const double side =
      push * (description.side.perSideslip * sideslip + description.side.perRudder * surfaces.z);
  const Vector moment = MomentCoefficients(description, surfaces, plainRates, angle, sideslip);

  // Lift is at a right angle to the flow, drag along it.
  const double sine = std::sin(angle);
  const double cosine = std::cos(angle);
  return {
      .force = {forces.lift * sine - forces.drag * cosine, side, -forces.lift * cosine - forces.drag * sine},
      .moment = {push * span * moment.x, push * chord * moment.y, push * span * moment.z}};
}

Push EngineForce(const AircraftDescription& description, double throttle, bool hasFuel, Forces& forces) {
  const auto& engine = description.engine;
  const double power = hasFuel ? engine.power * throttle * forces.airDensity / kSeaLevelDensity : 0.0;
  // At this airspeed, power over airspeed is the static thrust: there the two laws are blended.
  const double blendSpeed = engine.power * engine.efficiency / engine.staticThrust;
  forces.thrust = power * engine.efficiency / std::hypot(forces.airspeed, blendSpeed);
  forces.fuelFlow = power * engine.fuelPerPower / kJoulesPerKilowattHour;
  return {.force = {forces.thrust, 0.0, 0.0}, .moment = {}};
}

}  // namespace sim::world
