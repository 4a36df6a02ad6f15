#include "VYRALoader.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderLifecycle.h"
#include "VYRALoaderModule.h"
#include "VYRAModuleLoader.h"
#include "VYRAStrings.h"

bool gScheduleReload = false;

namespace {

constexpr std::size_t kHostPathSize = 4096;  // above what the services promise to stay below

std::vector<std::string> SortedListing(const std::string& folder, const char* pattern) {
  std::vector<std::string> names;
  VYRAFetchDirectoryContents(folder.c_str(), pattern, names);
  std::sort(names.begin(), names.end());
  return names;
}

bool Contains(std::string_view name, std::string_view part) {
  return name.find(part) != std::string_view::npos;
}

void LogFetching(const std::string& folder) { VYRALog("Fetching plugins for ", folder, "\n\n"); }

void RegisterHost() {
  PluginRecord host;
  host.name = "Skyvora";
  // Kept: the host's signature stands in its path and its own signature is empty. Plugins find the host
  // by this path, and an empty signature counts as taken.
  host.path = "brelund.skyvora.skyvora";
  host.description = "Skyvora flight simulator";
  host.receiveMessage = gHooks->HostReceiveMessage;
  VYRARegistryAppend(std::move(host));
  VYRARegistrySetEnabled(VYRA_HOST_PLUGIN, true);
}

void LoadLooseModules(const std::string& folder, const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    if (Contains(name, "PluginAdmin")) continue;
    if (gHooks->serviceTableRevision > 3) gHooks->ShowLoadingStatus(("Loading Plugin: " + name).c_str());
    LoadOnePlugin(folder + gDirSeparator + name, 1);
  }
}

void LoadPluginFolders(const std::string& folder) {
  for (const std::string& name : SortedListing(folder, "DIR")) {
    const bool passedOver = Contains(name, "PluginAdmin") || Contains(name, "VYRA.framework") ||
                            Contains(name, "VyWidgets.framework");
    if (!passedOver) LoadFatPlugin(folder + gDirSeparator + name);
  }
}

// Loads every plugin folder in a folder; the IDs of those that started.
std::vector<VYRAPluginID> LoadPackage(const std::string& folder) {
  const std::vector<std::string> names = SortedListing(folder, "DIR");
  std::vector<VYRAPluginID> loaded;
  if (!names.empty()) LogFetching(folder);
  for (const std::string& name : names) {
    const VYRAPluginID plugin = LoadFatPlugin(folder + gDirSeparator + name);
    if (plugin != VYRA_NO_PLUGIN) loaded.push_back(plugin);
  }
  return loaded;
}

}  // namespace

VYRAPluginID LoadFatPlugin(const std::string& folder) {
  const VYRAPluginID plugin = LoadOnePlugin(folder + "/64/lin.vyp", 0);
  return plugin != VYRA_NO_PLUGIN ? plugin : LoadOnePlugin(folder + "/lin.vyp", 0);
}

void VYRAFindAndLoadPlugins(const std::string& systemPath) {
  VYRASetDispatchedPlugin(VYRA_HOST_PLUGIN);
  RegisterHost();
  const std::string folder = systemPath + "Resources/plugins";
  LogFetching(folder);
  const std::vector<std::string> modules = SortedListing(folder, "*.vyp");
  LoadFatPlugin(folder + "/PluginAdmin");
  LoadLooseModules(folder, modules);
  LoadPluginFolders(folder);
}

void VYRAFindAndLoadAcfPlugins(const std::string& aircraftFolder) {
  const std::vector<VYRAPluginID> loaded = LoadPackage(aircraftFolder + "/plugins");
  gCurrentAircraftPluginIDS.insert(gCurrentAircraftPluginIDS.end(), loaded.begin(), loaded.end());
}

void VYRAFindAndLoadUserAcfPlugins() {
  char path[kHostPathSize] = "";
  char fileName[kHostPathSize] = "";
  gHooks->GetNthAircraftModel(0, path, fileName);
  const std::string_view folder = path;
  const std::size_t separator = folder.rfind('/');
  if (separator != std::string_view::npos) {
    VYRAFindAndLoadAcfPlugins(std::string(folder.substr(0, separator)));
  }
}

void VYRAFindAndLoadSceneryPlugins(const std::string& packageFolder) {
  for (const VYRAPluginID plugin : LoadPackage(packageFolder + "plugins")) VYRAEnablePlugin(plugin);
}

void VYRAReloadPlugins(void) { gScheduleReload = true; }

void VYRAReloadPluginsInternal() {
  gScheduleReload = false;
  VYRADisableAllPlugins();
  VYRAUnloadAcfPlugin();
  VYRAUnloadPlugins();
  if (gHooks->serviceTableRevision > 2) {
    gHooks->ShowMessage("Please place your new plugin in the plugins folder.",
                        "I will then reload all plugins.", "", "");
  }
  char systemPath[kHostPathSize] = "";
  gHooks->GetSystemPath(systemPath);
  VYRAFindAndLoadPlugins(systemPath);
  VYRAFindAndLoadUserAcfPlugins();
  VYRAEnableAllPlugins();
}
