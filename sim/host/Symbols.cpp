// Each function's type stands in sim/README.md: a plugin casts the address to it.
#include "host/Symbols.h"

#include <cstring>
#include <limits>

#include "report/Log.h"
#include "world/World.h"

namespace sim {
namespace {

double ElapsedSeconds() { return gWorld.elapsedSeconds; }

// Metres above sea level; no number where there is no world.
double GroundAltitude(double latitude, double longitude) {
  const std::optional<world::Ground> ground =
      gWorld.terrain.GroundAt({.latitude = latitude, .longitude = longitude, .altitude = 0.0});
  return ground ? ground->altitude : std::numeric_limits<double>::quiet_NaN();
}

void WriteLog(const char* text) {
  if (text != nullptr) gLog->Write(text);
}

void* Find(const char* name) {
  if (name == nullptr) return nullptr;
  if (std::strcmp(name, "skyvora_elapsed_seconds") == 0) return reinterpret_cast<void*>(ElapsedSeconds);
  if (std::strcmp(name, "skyvora_ground_altitude_m") == 0) return reinterpret_cast<void*>(GroundAltitude);
  if (std::strcmp(name, "skyvora_write_log") == 0) return reinterpret_cast<void*>(WriteLog);
  return nullptr;
}

}  // namespace

void FillSymbolServices(VYRAHostServices& services) { services.FindSymbol = Find; }

}  // namespace sim
