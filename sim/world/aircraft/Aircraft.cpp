// The equations of motion of a rigid body over ground that neither turns nor curves beneath it, and the
// latitudes and longitudes that it comes to on the ellipsoid: B. Stevens, F. Lewis, Aircraft Control and
// Simulation, second edition, 2003, section 1.5. What the earth's curvature and rotation would add is below a
// thousandth of gravity at the speeds flown here. Speeds are integrated before places (semi-implicit Euler),
// which keeps springs from gaining energy.
#include "world/aircraft/Aircraft.h"

#include <algorithm>

#include "world/aircraft/Aerodynamics.h"
#include "world/aircraft/LandingGear.h"
#include "world/earth/Atmosphere.h"
#include "world/terrain/NaturalHeight.h"

namespace sim::world {
namespace {

constexpr double kLongestStep = 1.0 / 120.0;  // seconds
constexpr double kStartAltitude = 300.0;      // metres
constexpr double kStartSpeed = 50.0;          // metres per second
constexpr double kStartClimb = 1.5;
constexpr double kNearGround = 15.0;        // metres, from where on wheels may touch
constexpr double kHardestSinking = 6.0;     // metres per second, that the gear survives
constexpr double kMostBankOnGround = 55.0;  // degrees
constexpr double kMostPitchOnGround = 40.0;
constexpr double kNorthmost = 89.9;  // degrees: nobody flies over a pole

bool IsFinite(const Vector& vector) {
  return std::isfinite(vector.x) && std::isfinite(vector.y) && std::isfinite(vector.z);
}

}  // namespace

Aircraft::Aircraft() {
  PutInFlight({.latitude = kHome.latitude, .longitude = kHome.longitude, .altitude = kStartAltitude}, 0.0,
              kStartSpeed);
  motion.velocity.z = -kStartClimb;
}

void Aircraft::PutInFlight(const Place& place, double heading, double speed) {
  motion.place = place;
  motion.attitude = Attitude({.heading = heading, .pitch = autopilot.targetPitch, .roll = 0.0});
  motion.velocity = {speed * std::cos(ToRadians(heading)), speed * std::sin(ToRadians(heading)), 0.0};
  motion.rates = {};
  forces = {};
  hasCrashed = false;
}

void Aircraft::PutOnGround(const Place& place, double heading, const Terrain& terrain) {
  controls = {.throttle = 0.0};
  autopilot.holdsHeading = autopilot.holdsPitch = autopilot.holdsAltitude = false;
  PutInFlight(place, heading, 0.0);
  motion.attitude = Attitude({.heading = heading, .pitch = 0.0, .roll = 0.0});
  const std::optional<Ground> ground = terrain.GroundAt(place);
  const Vector velocity = ground ? ground->velocity : Vector{};
  motion.velocity = {-velocity.z, velocity.x, 0.0};
  motion.place.altitude =
      (ground ? ground->altitude : 0.0) + StandingHeight(description, description.mass.empty + motion.fuel);
}

void Aircraft::Advance(double seconds, const Terrain& terrain, const Weather& weather) {
  const int steps = std::max(1, static_cast<int>(std::ceil(seconds / kLongestStep - 1e-9)));
  const double step = seconds / steps;
  const Vector wind = weather.Wind();
  for (int count = 0; count < steps && !hasCrashed; ++count) {
    autopilot.Steer(controls, Angles(), motion.rates, motion.place.altitude, Climb(), step);
    Step(step, terrain, wind);
  }
}

void Aircraft::Step(double seconds, const Terrain& terrain, const Vector& wind) {
  const Motion before = motion;
  forces.airDensity = AirAt(motion.place.altitude).density;
  forces.mass = description.mass.empty + motion.fuel;
  Push push =
      AirForces(description, controls, motion.attitude.ToBody(motion.velocity - wind), motion.rates, forces);
  push.force += EngineForce(description, controls.throttle, motion.fuel > 0.0, forces).force;

  // Beyond the world there is nothing but sea.
  const Ground ground = terrain.GroundAt(motion.place).value_or(Ground{.isWet = true});
  heightAboveGround = motion.place.altitude - ground.altitude;
  forces.wheelsOnGround = 0;
  if (heightAboveGround < kNearGround && !ground.isWet) {
    const Push gear = GearForces(description, controls, motion, ground, forces);
    push.force += gear.force;
    push.moment += gear.moment;
  }

  const double gravity = GravityAt(motion.place.latitude);
  const Vector felt = (1.0 / forces.mass) * push.force;
  forces.loadFactor = -felt.z / gravity;
  motion.velocity += seconds * (motion.attitude.ToEarth(felt) + Vector{0.0, 0.0, gravity});

  const Vector inertia{description.mass.rollInertia, description.mass.pitchInertia,
                       description.mass.yawInertia};
  const Vector momentum{inertia.x * motion.rates.x, inertia.y * motion.rates.y, inertia.z * motion.rates.z};
  const Vector moment = push.moment - Cross(motion.rates, momentum);
  motion.rates += seconds * Vector{moment.x / inertia.x, moment.y / inertia.y, moment.z / inertia.z};
  motion.attitude.Turn(motion.rates, seconds);

  const double altitude = motion.place.altitude - seconds * motion.velocity.z;
  motion.place =
      Moved(motion.place, {.north = seconds * motion.velocity.x, .east = seconds * motion.velocity.y});
  motion.place.latitude = std::clamp(motion.place.latitude, -kNorthmost, kNorthmost);
  motion.place.altitude = altitude;
  motion.fuel = std::max(0.0, motion.fuel - forces.fuelFlow * seconds);

  // A description with numbers that no aircraft has may end in no numbers at all.
  if (!IsFinite(motion.velocity) || !IsFinite(motion.rates) || !std::isfinite(altitude)) {
    motion = before;
    Stop(before.place.altitude);
  } else if (HitsTooHard(ground)) {
    Stop(std::max(altitude, ground.altitude));
  }
}

bool Aircraft::HitsTooHard(const Ground& ground) const {
  const double height = motion.place.altitude - ground.altitude;
  if (ground.isWet) return height <= 0.0;
  if (height <= 0.0) return true;
  if (forces.wheelsOnGround == 0) return false;
  const EulerAngles angles = Angles();
  return Climb() < -kHardestSinking || std::abs(angles.roll) > kMostBankOnGround ||
         std::abs(angles.pitch) > kMostPitchOnGround;
}

void Aircraft::Stop(double altitude) {
  hasCrashed = true;
  motion.place.altitude = altitude;
  motion.velocity = {};
  motion.rates = {};
  forces.airspeed = 0.0;
  forces.thrust = 0.0;
  forces.fuelFlow = 0.0;
  forces.loadFactor = 1.0;
}

}  // namespace sim::world
