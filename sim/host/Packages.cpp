#include "host/Packages.h"

#include <fmt/format.h>

#include <filesystem>
#include <vector>

#include "host/Events.h"
#include "host/LoadWatch.h"
#include "host/PluginList.h"
#include "world/World.h"

namespace sim {
namespace {

void* const kUsersPlane = nullptr;  // plane 0, as an event's parameter

std::string AircraftName() { return std::filesystem::path(gWorld.modelPath).stem().string(); }

}  // namespace

std::string LoadUserAircraft(const std::string& modelPath) {
  if (IsUserAircraftLoaded()) UnloadUserAircraft();
  gWorld.modelPath = modelPath;
  const std::vector<PluginInfo> before = ListPlugins();
  const LoadRound round;
  TellLibrary(VYRA_EVENT_PLANE_LOADED, kUsersPlane);
  round.AuditPackage(PluginsOfAircraft(modelPath));
  return fmt::format("aircraft {} loaded: {}", AircraftName(), DescribeDifference(ListPlugins(), before));
}

std::string UnloadUserAircraft() {
  const std::string name = AircraftName();
  const std::vector<PluginInfo> before = ListPlugins();
  TellLibrary(VYRA_EVENT_PLANE_UNLOADED, kUsersPlane);
  // Not earlier: plugins that hear of the event may still ask for the model.
  gWorld.modelPath.clear();
  return fmt::format("aircraft {} unloaded: {} gone", name, DescribeDifference(before, ListPlugins()));
}

bool IsUserAircraftLoaded() { return !gWorld.modelPath.empty(); }

std::string LoadScenery(const std::string& folder) {
  std::string path = folder;
  const std::vector<PluginInfo> before = ListPlugins();
  const LoadRound round;
  TellLibrary(VYRA_EVENT_SCENERY_PACKAGE, path.data());
  round.AuditPackage(folder + "plugins");
  const std::string name = std::filesystem::path(folder).parent_path().filename().string();
  return fmt::format("scenery {} loaded: {}", name, DescribeDifference(ListPlugins(), before));
}

}  // namespace sim
