// Radii, gravity: National Imagery and Mapping Agency, TR8350.2, Department of Defense World Geodetic System
// 1984, third edition.
#include "world/earth/Earth.h"

#include <GeographicLib/Geodesic.hpp>
#include <algorithm>
#include <cmath>

#include "world/Angles.h"

namespace sim::world {
namespace {

constexpr double kEquatorialRadius = 6'378'137.0;  // metres
constexpr double kFlattening = 1.0 / 298.257223563;
constexpr double kEccentricitySquared = kFlattening * (2.0 - kFlattening);

constexpr double kSmallestCircle = 1.0;  // metres: at a pole, any longitude is as good as another

constexpr double kGravityAtEquator = 9.7803253359;
constexpr double kGravityFormulaConstant = 0.00193185265241;

}  // namespace

MetresPerRadian MetresPerRadianAt(const Place& place) {
  const double latitude = ToRadians(place.latitude);
  const double sine = std::sin(latitude);
  const double squash = 1.0 - kEccentricitySquared * sine * sine;
  const double primeVertical = kEquatorialRadius / std::sqrt(squash);
  const double meridian = primeVertical * (1.0 - kEccentricitySquared) / squash;
  const double toAxis = (primeVertical + place.altitude) * std::cos(latitude);
  return {.north = meridian + place.altitude, .east = std::max(toAxis, kSmallestCircle)};
}

GroundOffset OffsetBetween(const Place& from, const Place& to) {
  const MetresPerRadian metres = MetresPerRadianAt(from);
  return {.north = ToRadians(to.latitude - from.latitude) * metres.north,
          .east = ToRadians(std::remainder(to.longitude - from.longitude, 360.0)) * metres.east};
}

Place Moved(const Place& from, const GroundOffset& offset) {
  const MetresPerRadian metres = MetresPerRadianAt(from);
  return {.latitude = from.latitude + ToDegrees(offset.north / metres.north),
          .longitude = std::remainder(from.longitude + ToDegrees(offset.east / metres.east), 360.0),
          .altitude = from.altitude};
}

Way WayBetween(const Place& from, const Place& to) {
  double metres = 0.0;
  double heading = 0.0;
  double headingThere = 0.0;
  GeographicLib::Geodesic::WGS84().Inverse(from.latitude, from.longitude, to.latitude, to.longitude, metres,
                                           heading, headingThere);
  return {.metres = metres, .heading = NormalHeading(heading)};
}

double GravityAt(double latitudeDegrees) {
  const double sine = std::sin(ToRadians(latitudeDegrees));
  return kGravityAtEquator * (1.0 + kGravityFormulaConstant * sine * sine) /
         std::sqrt(1.0 - kEccentricitySquared * sine * sine);
}

}  // namespace sim::world
