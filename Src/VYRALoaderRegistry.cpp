#include "VYRALoaderRegistry.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "VYRALoaderPaths.h"
#include "VYRAStrings.h"

std::vector<PluginRecord> gAllPlugins;
VYRAPluginID gDispatchedPlugin = VYRA_HOST_PLUGIN;
int gDispatchDepth = 0;

namespace {

// What gCallable points into: the first flag is VYRA_NO_PLUGIN's, the next the host's. They never become
// fewer, as an ID that was given out may be asked about when its plugin is gone.
std::vector<char> gCallableFlags(256);

const char* AllowHostAlone() {
  std::fill(gCallableFlags.begin(), gCallableFlags.end(), char{0});
  gCallableFlags[1] = 1;
  return &gCallableFlags[1];
}

// The first record, from the host up, whose field equals `wanted`, or -1.
VYRAPluginID FindByField(std::string PluginRecord::*field, std::string_view wanted) {
  const auto found = std::find_if(gAllPlugins.begin(), gAllPlugins.end(),
                                  [&](const PluginRecord& record) { return record.*field == wanted; });
  if (found == gAllPlugins.end()) return VYRA_NO_PLUGIN;
  return static_cast<VYRAPluginID>(found - gAllPlugins.begin());
}

}  // namespace

const char* gCallable = AllowHostAlone();

VYRAPluginID VYRASetDispatchedPlugin(VYRAPluginID plugin) {
  gDispatchedPlugin = plugin;
  return plugin;
}

VYRAPluginID VYRAGetDispatchedPlugin() { return gDispatchedPlugin; }

PluginRecord& VYRARegistryAppend(PluginRecord record) {
  gAllPlugins.push_back(std::move(record));
  if (gCallableFlags.size() <= gAllPlugins.size()) gCallableFlags.resize(2 * gCallableFlags.size());
  gCallable = &gCallableFlags[1];
  VYRARegistrySetEnabled(VYRACountPlugins() - 1, false);
  return gAllPlugins.back();
}

void VYRARegistryDropLast() {
  VYRARegistrySetEnabled(VYRACountPlugins() - 1, false);
  gAllPlugins.pop_back();
}

void VYRARegistryClear() {
  gAllPlugins.clear();
  gCallable = AllowHostAlone();
}

void VYRARegistrySetEnabled(VYRAPluginID plugin, bool enabled) {
  gCallableFlags[static_cast<std::size_t>(plugin) + 1] = enabled ? 1 : 0;
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
