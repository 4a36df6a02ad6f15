#include "host/SceneryServices.h"

#include <fmt/core.h>

#include "host/Events.h"
#include "report/Log.h"
#include "report/News.h"
#include "world/World.h"

namespace sim {
namespace {

int gReloads = 0;

int Lookup(const char* path, float latitude, float longitude, VYRALibraryEnumerator_f enumerator,
           void* refcon) {
  if (path == nullptr) return 0;
  const std::vector<std::string> files =
      gWorld.scenery.Lookup(path, {.latitude = static_cast<double>(latitude),
                                   .longitude = static_cast<double>(longitude),
                                   .altitude = 0.0});
  if (enumerator != nullptr)
    for (const std::string& file : files) enumerator(file.c_str(), refcon);
  return static_cast<int>(files.size());
}

}  // namespace

void FillSceneryServices(VYRAHostServices& services) {
  services.LookupObjects = Lookup;
  services.ReloadScenery = ReloadScenery;
}

void ReloadScenery() {
  ++gReloads;
  std::vector<std::string> problems = gWorld.scenery.Read();
  for (std::string& problem : gWorld.objects.Reload()) problems.push_back(std::move(problem));
  for (const std::string& problem : problems) gLog->Write(fmt::format("Failed: {}\n", problem));
  gNews.push_back(fmt::format("scenery read anew: {} packages", gWorld.scenery.Packages().size()));
  TellLibrary(VYRA_EVENT_BROADCAST_105, nullptr);
}

int CountSceneryReloads() { return gReloads; }

}  // namespace sim
