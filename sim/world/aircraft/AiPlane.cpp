// No forces here: it turns at the standard rate, banks as a turn without slip asks for, and climbs steadily.
#include "world/aircraft/AiPlane.h"

#include <algorithm>
#include <cmath>

#include "world/Angles.h"

namespace sim::world {
namespace {

constexpr double kHalfLength = 2'500.0;  // of the circuit, metres, from west to east
constexpr double kHalfWidth = 1'200.0;
constexpr double kCloseToCorner = 400.0;
constexpr double kTurnRate = 3.0;   // degrees per second
constexpr double kClimb = 2.5;      // metres per second
constexpr double kRollRate = 15.0;  // degrees per second
constexpr double kGravity = 9.81;

double Towards(double from, double to, double most) { return from + std::clamp(to - from, -most, most); }

}  // namespace

AiPlane::AiPlane(const Place& middle)
    : corners{Moved(middle, {.north = kHalfWidth, .east = -kHalfLength}),
              Moved(middle, {.north = kHalfWidth, .east = kHalfLength}),
              Moved(middle, {.north = -kHalfWidth, .east = kHalfLength}),
              Moved(middle, {.north = -kHalfWidth, .east = -kHalfLength})} {
  place = corners[0];
  angles.heading = 90.0;
}

void AiPlane::Advance(double seconds) {
  GroundOffset way = OffsetBetween(place, corners[nextCorner]);
  if (std::hypot(way.north, way.east) < kCloseToCorner) {
    nextCorner = (nextCorner + 1) % corners.size();
    way = OffsetBetween(place, corners[nextCorner]);
  }
  const double wanted = ToDegrees(std::atan2(way.east, way.north));
  const double turn =
      std::clamp(TurnBetween(angles.heading, wanted), -kTurnRate * seconds, kTurnRate * seconds);
  angles.heading = NormalHeading(angles.heading + turn);
  const double bank =
      seconds > 0.0 ? ToDegrees(std::atan(speed * ToRadians(turn / seconds) / kGravity)) : angles.roll;
  angles.roll = Towards(angles.roll, bank, kRollRate * seconds);

  const double altitude = Towards(place.altitude, corners[nextCorner].altitude, kClimb * seconds);
  const double climbed = altitude - place.altitude;
  angles.pitch =
      seconds > 0.0 && speed > 0.0 ? ToDegrees(std::atan2(climbed / seconds, speed)) : angles.pitch;
  const double track = ToRadians(angles.heading);
  place =
      Moved(place, {.north = speed * seconds * std::cos(track), .east = speed * seconds * std::sin(track)});
  place.altitude = altitude;
}

}  // namespace sim::world
