// What plugins and hosts ask about the plugins that are loaded.
#include <algorithm>
#include <string_view>

#include "VYRALoaderDispatch.h"
#include "VYRALoaderPaths.h"
#include "VYRAStrings.h"

namespace {

// The first record, from the host up, whose field equals `wanted`, or -1.
VYRAPluginID FindByField(std::string PluginRecord::*field, std::string_view wanted) {
  const auto found = std::find_if(gAllPlugins.begin(), gAllPlugins.end(),
                                  [&](const PluginRecord& record) { return record.*field == wanted; });
  if (found == gAllPlugins.end()) return VYRA_NO_PLUGIN;
  return static_cast<VYRAPluginID>(found - gAllPlugins.begin());
}

}  // namespace

// Nobody is dispatched while a module is closed: to its destructors that looks as if the host were.
VYRAPluginID VYRAGetMyID(void) {
  return gDispatchedPlugin != VYRA_NO_PLUGIN ? gDispatchedPlugin : VYRA_HOST_PLUGIN;
}

int VYRACountPlugins(void) { return static_cast<int>(gAllPlugins.size()); }

VYRAPluginID VYRAGetNthPlugin(int index) { return index; }

int VYRAIsPluginEnabled(VYRAPluginID plugin) { return VYRARegistryIsEnabled(plugin) ? 1 : 0; }

VYRAPluginID VYRAFindPluginByPath(const char* path) {
  if (path == nullptr || *path == '\0') return VYRA_NO_PLUGIN;  // closed records have an empty one
  return FindByField(&PluginRecord::path, VYRAPathFromPlugin(path));
}

VYRAPluginID VYRAFindPluginBySignature(const char* signature) {
  if (signature == nullptr) return VYRA_NO_PLUGIN;
  return FindByField(&PluginRecord::signature, signature);
}

void VYRAGetPluginInfo(VYRAPluginID plugin, char* outName, char* outFilePath, char* outSignature,
                       char* outDescription) {
  if (!VYRARegistryHolds(plugin)) return;
  const PluginRecord& record = VYRARegistryRecord(plugin);
  strcpytrunc(outName, record.name, VYRA_PLUGIN_INFO_SIZE);
  strcpytrunc(outFilePath, VYRAPathToPlugin(record.path), VYRA_PLUGIN_INFO_SIZE);
  strcpytrunc(outSignature, record.signature, VYRA_PLUGIN_INFO_SIZE);
  strcpytrunc(outDescription, record.description, VYRA_PLUGIN_INFO_SIZE);
}
