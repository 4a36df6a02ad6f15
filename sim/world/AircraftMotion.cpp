// The equations of the motion. Speeds settle with a time constant; turns are made at the standard rate.
#include "world/AircraftMotion.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sim {
namespace {

constexpr float kIdleSpeed = 20.0F;            // metres per second
constexpr float kSpeedOfFullThrottle = 60.0F;  // on top of the idle speed
constexpr float kSettlingSeconds = 5.0F;       // of the speed after a change of throttle
constexpr float kLevelFlightSpeed = 45.0F;     // climbs when faster, sinks when slower
constexpr float kClimbPerSpeed = 0.15F;        // metres per second of climb for each of excess speed
constexpr float kTurnRate = 3.0F;              // degrees per second

}  // namespace

float NormalHeading(float degrees) {
  const float remainder = std::fmod(degrees, 360.0F);
  return remainder < 0.0F ? remainder + 360.0F : remainder;
}

void AircraftMotion::Advance(double seconds) {
  const auto step = static_cast<float>(seconds);
  const float settledSpeed = kIdleSpeed + kSpeedOfFullThrottle * throttleRatio;
  speedMetresPerSecond += (settledSpeed - speedMetresPerSecond) * (1.0F - std::exp(-step / kSettlingSeconds));
  climbMetresPerSecond = (speedMetresPerSecond - kLevelFlightSpeed) * kClimbPerSpeed;
  altitudeMetres = std::max(0.0F, altitudeMetres + climbMetresPerSecond * step);

  const float wantedTurn = std::remainder(targetHeadingDegrees - headingDegrees, 360.0F);
  headingDegrees =
      NormalHeading(headingDegrees + std::clamp(wantedTurn, -kTurnRate * step, kTurnRate * step));

  constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
  const double track = static_cast<double>(headingDegrees) * kRadiansPerDegree;
  const double degreesFlown = static_cast<double>(speedMetresPerSecond) * seconds / kMetresPerDegree;
  longitudeDegrees += degreesFlown * std::sin(track) / std::cos(latitudeDegrees * kRadiansPerDegree);
  latitudeDegrees += degreesFlown * std::cos(track);
}

}  // namespace sim
