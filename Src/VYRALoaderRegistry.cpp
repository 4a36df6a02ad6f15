#include "VYRALoaderRegistry.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "VYRALoaderPaths.h"
#include "VYRAStrings.h"

std::vector<PluginRecord> gAllPlugins;
std::vector<unsigned char> gCallable(1, 1);
VYRAPluginID gDispatchedPlugin = VYRA_HOST_PLUGIN;
int gDispatchDepth = 0;

namespace {

// The first record, from the host up, whose field equals `wanted`, or -1.
VYRAPluginID FindByField(std::string PluginRecord::*field, std::string_view wanted) {
  const auto found = std::find_if(gAllPlugins.begin(), gAllPlugins.end(),
                                  [&](const PluginRecord& record) { return record.*field == wanted; });
  if (found == gAllPlugins.end()) return VYRA_NO_PLUGIN;
  return static_cast<VYRAPluginID>(found - gAllPlugins.begin());
}

}  // namespace

VYRAPluginID VYRASetDispatchedPlugin(VYRAPluginID plugin) {
  gDispatchedPlugin = plugin;
  return plugin;
}

VYRAPluginID VYRAGetDispatchedPlugin() { return gDispatchedPlugin; }

PluginRecord& VYRARegistryAppend(PluginRecord record) {
  gAllPlugins.push_back(std::move(record));
  gCallable.resize(gAllPlugins.size());
  VYRARegistrySetEnabled(VYRACountPlugins() - 1, false);
  return gAllPlugins.back();
}

void VYRARegistryDropLast() {
  gAllPlugins.pop_back();
  gCallable.pop_back();
}

void VYRARegistryClear() {
  gAllPlugins.clear();
  gCallable.assign(1, 1);
}

VYRAPluginID VYRAGetMyID(void) { return gDispatchedPlugin; }

int VYRACountPlugins(void) { return static_cast<int>(gAllPlugins.size()); }

VYRAPluginID VYRAGetNthPlugin(int index) { return index; }

int VYRAIsPluginEnabled(VYRAPluginID plugin) { return VYRARegistryIsEnabled(plugin) ? 1 : 0; }

VYRAPluginID VYRAFindPluginByPath(const char* path) {
  if (path == nullptr) return VYRA_NO_PLUGIN;
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
