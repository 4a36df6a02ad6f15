#include "VYRALoader.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderLifecycle.h"
#include "VYRALoaderModule.h"
#include "VYRALoaderPaths.h"
#include "VYRALoaderState.h"
#include "VYRALoaderSteps.h"
#include "VYRAModuleLoader.h"
#include "VYRAStrings.h"

namespace {

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

void LoadLooseModule(const std::string& folder, const std::string& name) {
  if (!VYRALoaderMayLoad()) return;
  if (gHooks->serviceTableRevision > 3) gHooks->ShowLoadingStatus(("Loading Plugin: " + name).c_str());
  LoadOnePlugin(folder + gDirSeparator + name, 1, nullptr);
}

bool IsPassedOver(std::string_view folder) {
  return Contains(folder, "PluginAdmin") || Contains(folder, "VYRA.framework") ||
         Contains(folder, "VyWidgets.framework");
}

// Loads every plugin folder in a folder, and puts the IDs of those that start on the list, each at once.
void LoadPackage(const std::string& folder, std::vector<VYRAPluginID>& list) {
  if (!VYRALoaderMayLoad()) return;
  const std::vector<std::string> names = SortedListing(folder, "DIR");
  VYRALoaderSteps steps;
  if (!names.empty()) steps.Take([&] { LogFetching(folder); });
  for (const std::string& name : names) {
    steps.Take([&] { LoadFatPlugin(folder + gDirSeparator + name, &list); });
  }
  steps.End();
}

}  // namespace

VYRAPluginID LoadFatPlugin(const std::string& folder, std::vector<VYRAPluginID>* list) {
  const VYRAPluginID plugin = LoadOnePlugin(folder + "/64/lin.vyp", 0, list);
  return plugin != VYRA_NO_PLUGIN ? plugin : LoadOnePlugin(folder + "/lin.vyp", 0, list);
}

// One plugin that throws in its start keeps no other from being loaded.

void VYRAFindAndLoadPlugins(const std::string& systemPath) {
  if (!gIsStarted || !gAllPlugins.empty()) return;
  VYRASetDispatchedPlugin(VYRA_HOST_PLUGIN);
  RegisterHost();
  const std::string folder = systemPath + "Resources/plugins";
  VYRALoaderSteps steps;
  steps.Take([&] { LogFetching(folder); });
  const std::vector<std::string> modules = SortedListing(folder, "*.vyp");
  steps.Take([&] { LoadFatPlugin(folder + "/PluginAdmin", nullptr); });
  for (const std::string& name : modules) {
    if (!Contains(name, "PluginAdmin")) steps.Take([&] { LoadLooseModule(folder, name); });
  }
  for (const std::string& name : SortedListing(folder, "DIR")) {
    if (!IsPassedOver(name)) steps.Take([&] { LoadFatPlugin(folder + gDirSeparator + name, nullptr); });
  }
  steps.End();
}

void VYRAFindAndLoadAcfPlugins(const std::string& aircraftFolder) {
  LoadPackage(aircraftFolder + "/plugins", gCurrentAircraftPluginIDS);
}

void VYRAFindAndLoadUserAcfPlugins() {
  if (!VYRALoaderMayLoad()) return;
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
  std::vector<VYRAPluginID> loaded;
  VYRALoaderSteps steps;
  steps.Take([&] { LoadPackage(packageFolder + "plugins", loaded); });
  steps.Take([&] { VYRAEnablePlugins(loaded); });
  steps.End();
}
