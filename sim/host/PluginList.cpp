// Reading the registry through the functions that plugins use.
#include "host/PluginList.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace sim {
namespace {

constexpr const char* kSimulator = "simulator";

}  // namespace

std::vector<PluginInfo> ListPlugins() {
  std::vector<PluginInfo> list;
  const int count = VYRACountPlugins();
  for (int index = 0; index < count; ++index) {
    const VYRAPluginID id = VYRAGetNthPlugin(index);
    char name[VYRA_PLUGIN_INFO_SIZE] = "";
    char signature[VYRA_PLUGIN_INFO_SIZE] = "";
    char path[VYRA_PLUGIN_INFO_SIZE] = "";
    VYRAGetPluginInfo(id, name, path, signature, nullptr);
    list.push_back({id, name, signature, path, VYRAIsPluginEnabled(id) != 0});
  }
  return list;
}

std::string CallerPath() {
  const VYRAPluginID caller = VYRAGetMyID();
  char path[VYRA_PLUGIN_INFO_SIZE] = "";
  if (caller != VYRA_HOST_PLUGIN) VYRAGetPluginInfo(caller, nullptr, path, nullptr, nullptr);
  return path;
}

std::string OwnerOf(VYRAPluginID plugin) {
  char signature[VYRA_PLUGIN_INFO_SIZE] = "";
  VYRAGetPluginInfo(plugin, nullptr, nullptr, signature, nullptr);
  return plugin == VYRA_HOST_PLUGIN ? kSimulator : signature;
}

std::string OwnerOfPath(const std::string& path) {
  if (path.empty()) return kSimulator;
  const VYRAPluginID plugin = VYRAFindPluginByPath(path.c_str());
  return plugin != VYRA_NO_PLUGIN ? OwnerOf(plugin) : path;
}

std::string DescribeDifference(const std::vector<PluginInfo>& list, const std::vector<PluginInfo>& other) {
  std::vector<std::string> names;
  for (const PluginInfo& plugin : list)
    if (plugin.id != VYRA_HOST_PLUGIN &&
        std::ranges::find(other, plugin.signature, &PluginInfo::signature) == other.end())
      names.push_back(plugin.name);
  if (names.empty()) return "no plugins";
  return fmt::format("{} plugin{} ({})", names.size(), names.size() == 1 ? "" : "s", fmt::join(names, ", "));
}

}  // namespace sim
