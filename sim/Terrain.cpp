// The hills are sines; where they lie below 0 there is the sea. The ground ends 100 km from the origin, so
// that a probe can also miss.
#include "Terrain.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "AircraftMotion.h"
#include "World.h"

namespace sim {
namespace {

constexpr AircraftMotion kStart;  // the origin of local metres
constexpr double kExtent = 100'000.0;
constexpr double kHillHeight = 120.0;
constexpr double kHillWidth = 2'000.0;

int gProbeCount = 0;

double MetresPerDegreeOfLongitude() {
  return kMetresPerDegree * std::cos(kStart.latitudeDegrees * std::numbers::pi / 180.0);
}

double HillAt(double x, double z) {
  return kHillHeight * std::cos(x / kHillWidth) * std::cos(z / kHillWidth);
}

void WriteNormal(double x, double z, bool isWet, float* normal) {
  const double slope = isWet ? 0.0 : kHillHeight / kHillWidth;
  const double toEast = -slope * std::sin(x / kHillWidth) * std::cos(z / kHillWidth);
  const double toSouth = -slope * std::cos(x / kHillWidth) * std::sin(z / kHillWidth);
  const double length = std::hypot(toEast, 1.0, toSouth);
  normal[0] = static_cast<float>(-toEast / length);
  normal[1] = static_cast<float>(1.0 / length);
  normal[2] = static_cast<float>(-toSouth / length);
}

// Looks straight down, from however high or low.
int Probe(int probe, const float* point, float* location, float* normal, float* velocity, int* isWet) {
  ++gWorld.activity.probings;
  const auto x = static_cast<double>(point[0]);
  const auto z = static_cast<double>(point[2]);
  const bool isOnGround = std::abs(x) <= kExtent && std::abs(z) <= kExtent;  // false for no numbers too
  if (probe < 1 || probe > gProbeCount || !isOnGround) return 0;
  ++gWorld.activity.probingsThatHit;
  const double height = HillAt(x, z);
  *isWet = height <= 0.0 ? 1 : 0;
  location[0] = point[0];
  location[1] = static_cast<float>(std::max(0.0, height));
  location[2] = point[2];
  WriteNormal(x, z, *isWet != 0, normal);
  std::fill_n(velocity, 3, 0.0F);
  return 1;
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

void FillTerrainServices(VYRAHostServices& services) {
  services.WorldToLocal = [](double latitude, double longitude, double altitude, double* outX, double* outY,
                             double* outZ) {
    const LocalPoint point = ToLocal({latitude, longitude, altitude});
    *outX = point.x;
    *outY = point.y;
    *outZ = point.z;
  };
  services.LocalToWorld = [](double x, double y, double z, double* outLatitude, double* outLongitude,
                             double* outAltitude) {
    const WorldPoint point = ToWorld({x, y, z});
    *outLatitude = point.latitude;
    *outLongitude = point.longitude;
    *outAltitude = point.altitude;
  };
  services.CreateProbe = [] { return ++gProbeCount; };
  services.ProbeTerrainXYZ = Probe;
}

}  // namespace sim
