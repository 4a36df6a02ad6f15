// Reading the registry through the functions that plugins use.
#include "host/PluginList.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace sim {

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
