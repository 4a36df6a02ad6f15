// The hills are sines; where they lie below 0 there is the sea. The ground ends 100 km from the origin, so
// that a probe can also miss.
#include "world/Terrain.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "world/AircraftMotion.h"

namespace sim {
namespace {

constexpr AircraftMotion kStart;  // the origin of local metres
constexpr double kExtent = 100'000.0;
constexpr double kHillHeight = 120.0;
constexpr double kHillWidth = 2'000.0;

double MetresPerDegreeOfLongitude() {
  return kMetresPerDegree * std::cos(kStart.latitudeDegrees * std::numbers::pi / 180.0);
}

double HillAt(double x, double z) {
  return kHillHeight * std::cos(x / kHillWidth) * std::cos(z / kHillWidth);
}

std::array<double, 3> NormalAt(double x, double z, bool isWet) {
  const double slope = isWet ? 0.0 : kHillHeight / kHillWidth;
  const double toEast = -slope * std::sin(x / kHillWidth) * std::cos(z / kHillWidth);
  const double toSouth = -slope * std::cos(x / kHillWidth) * std::sin(z / kHillWidth);
  const double length = std::hypot(toEast, 1.0, toSouth);
  return {-toEast / length, 1.0 / length, -toSouth / length};
}

}  // namespace

LocalPoint ToLocal(WorldPoint point) {
  return {.x = (point.longitude - kStart.longitudeDegrees) * MetresPerDegreeOfLongitude(),
          .y = point.altitude,
          .z = -(point.latitude - kStart.latitudeDegrees) * kMetresPerDegree};
}

WorldPoint ToWorld(LocalPoint point) {
  return {.latitude = kStart.latitudeDegrees - point.z / kMetresPerDegree,
          .longitude = kStart.longitudeDegrees + point.x / MetresPerDegreeOfLongitude(),
          .altitude = point.y};
}

std::optional<Ground> GroundAt(double x, double z) {
  const bool isOnGround = std::abs(x) <= kExtent && std::abs(z) <= kExtent;  // false for no numbers too
  if (!isOnGround) return std::nullopt;
  const double height = HillAt(x, z);
  const bool isWet = height <= 0.0;
  return Ground{.height = std::max(0.0, height), .normal = NormalAt(x, z, isWet), .isWet = isWet};
}

}  // namespace sim
