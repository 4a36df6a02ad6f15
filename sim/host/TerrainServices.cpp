// Probes look straight down, from however high or low.
#include "host/TerrainServices.h"

#include <algorithm>

#include "report/Activity.h"
#include "world/Terrain.h"

namespace sim {
namespace {

int gProbeCount = 0;

int Probe(int probe, const float* point, float* location, float* normal, float* velocity, int* isWet) {
  ++gActivity.probings;
  const std::optional<Ground> ground = GroundAt(static_cast<double>(point[0]), static_cast<double>(point[2]));
  if (probe < 1 || probe > gProbeCount || !ground) return 0;
  ++gActivity.probingsThatHit;
  *isWet = ground->isWet ? 1 : 0;
  location[0] = point[0];
  location[1] = static_cast<float>(ground->height);
  location[2] = point[2];
  std::ranges::transform(ground->normal, normal, [](double part) { return static_cast<float>(part); });
  std::fill_n(velocity, 3, 0.0F);
  return 1;
}

}  // namespace

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
