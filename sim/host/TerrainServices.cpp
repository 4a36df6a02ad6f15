#include "host/TerrainServices.h"

#include "report/Activity.h"
#include "world/World.h"

namespace sim {
namespace {

int gProbeCount = 0;

void Give(float* out, const world::Vector& vector) {
  out[0] = static_cast<float>(vector.x);
  out[1] = static_cast<float>(vector.y);
  out[2] = static_cast<float>(vector.z);
}

int Probe(int probe, const float* point, float* location, float* normal, float* velocity, int* isWet) {
  ++gActivity.probings;
  if (probe < 1 || probe > gProbeCount) return 0;
  const std::optional<world::Terrain::Hit> hit = gWorld.terrain.Probe(
      gWorld.localFrame,
      {static_cast<double>(point[0]), static_cast<double>(point[1]), static_cast<double>(point[2])});
  if (!hit) return 0;
  ++gActivity.probingsThatHit;
  Give(location, hit->location);
  Give(normal, hit->normal);
  Give(velocity, hit->velocity);
  *isWet = hit->isWet ? 1 : 0;
  return 1;
}

void WorldToLocal(double latitude, double longitude, double altitude, double* outX, double* outY,
                  double* outZ) {
  const world::Vector local =
      gWorld.localFrame.ToLocal({.latitude = latitude, .longitude = longitude, .altitude = altitude});
  if (outX != nullptr) *outX = local.x;
  if (outY != nullptr) *outY = local.y;
  if (outZ != nullptr) *outZ = local.z;
}

void LocalToWorld(double x, double y, double z, double* outLatitude, double* outLongitude,
                  double* outAltitude) {
  const world::Place place = gWorld.localFrame.ToPlace({x, y, z});
  if (outLatitude != nullptr) *outLatitude = place.latitude;
  if (outLongitude != nullptr) *outLongitude = place.longitude;
  if (outAltitude != nullptr) *outAltitude = place.altitude;
}

}  // namespace

void FillTerrainServices(VYRAHostServices& services) {
  services.WorldToLocal = WorldToLocal;
  services.LocalToWorld = LocalToWorld;
  services.CreateProbe = [] { return ++gProbeCount; };
  services.ProbeTerrainXYZ = Probe;
}

}  // namespace sim
