#include "host/Packages.h"

#include <fmt/core.h>

#include <filesystem>
#include <vector>

#include "host/Events.h"
#include "host/LoadWatch.h"
#include "host/PluginList.h"
#include "report/Log.h"
#include "world/World.h"
#include "world/files/TextFile.h"

namespace sim {
namespace {

void* const kUsersPlane = nullptr;  // plane 0, as an event's parameter

std::string AircraftName() { return std::filesystem::path(gWorld.modelPath).stem().string(); }

// Throws FileError.
world::AircraftDescription ReadAircraft(const std::string& path) {
  world::AircraftDescription description = world::ParseAircraft(world::ReadTextFile(path), path);
  if (!description.modelFile.empty())
    world::ReadObjectModel((std::filesystem::path(path).parent_path() / description.modelFile).string());
  return description;
}

std::string SceneryName(const std::string& folder) {
  return std::filesystem::path(folder).parent_path().filename().string();
}

// Those that are loaded. The library knows of no way to unload them by themselves.
std::vector<PluginInfo> PluginsOfScenery(const std::string& folder) {
  std::vector<PluginInfo> plugins = ListPlugins();
  std::erase_if(plugins,
                [&](const PluginInfo& plugin) { return !plugin.path.starts_with(folder + "plugins/"); });
  return plugins;
}

void OpenPackage(const std::string& folder, bool isOpen) {
  std::string relative =
      std::filesystem::path(folder).lexically_normal().lexically_relative(gWorld.systemPath).string();
  if (!relative.ends_with('/')) relative += '/';
  for (const std::string& problem : gWorld.scenery.SetOpen(relative, isOpen))
    gLog->Write(fmt::format("Failed: {}\n", problem));
}

}  // namespace

PackageOutcome LoadUserAircraft(const std::string& modelPath) {
  world::AircraftDescription description;
  try {
    description = ReadAircraft(modelPath);
  } catch (const world::FileError& error) {
    gLog->Write(fmt::format("Failed: {}\n", error.what()));
    return {false, fmt::format("the aircraft is not loaded: {}", error.what())};
  }
  if (IsUserAircraftLoaded()) UnloadUserAircraft();
  gWorld.modelPath = modelPath;
  gWorld.aircraft.description = std::move(description);
  const std::vector<PluginInfo> before = ListPlugins();
  const LoadRound round;
  TellLibrary(VYRA_EVENT_PLANE_LOADED, kUsersPlane);
  round.AuditPackage(PluginsOfAircraft(modelPath));
  return {true,
          fmt::format("aircraft {} loaded: {}", AircraftName(), DescribeDifference(ListPlugins(), before))};
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
  OpenPackage(folder, true);
  const std::vector<PluginInfo> before = ListPlugins();
  const std::vector<PluginInfo> present = PluginsOfScenery(folder);
  const LoadRound round;
  for (const PluginInfo& plugin : present) CallHook("VYRAEnablePlugin", VYRAEnablePlugin, plugin.id);
  if (present.empty()) TellLibrary(VYRA_EVENT_SCENERY_PACKAGE, path.data());
  round.AuditPackage(folder + "plugins");
  return fmt::format("scenery {} loaded: {}", SceneryName(folder), DescribeDifference(ListPlugins(), before));
}

std::string UnloadScenery(const std::string& folder) {
  OpenPackage(folder, false);
  const std::vector<PluginInfo> present = PluginsOfScenery(folder);
  for (const PluginInfo& plugin : present) CallHook("VYRADisablePlugin", VYRADisablePlugin, plugin.id);
  TellPluginStates();
  return fmt::format("scenery {} closed: {} disabled", SceneryName(folder), DescribeDifference(present, {}));
}

}  // namespace sim
