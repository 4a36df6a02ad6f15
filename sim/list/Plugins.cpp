#include "host/PluginList.h"
#include "list/List.h"

namespace sim {

Rows ListedPlugins() {
  Rows rows = Rows::array();
  for (const PluginInfo& plugin : ListPlugins())
    if (plugin.id != VYRA_HOST_PLUGIN)
      rows.push_back({{"id", plugin.id},
                      {"name", plugin.name},
                      {"signature", plugin.signature},
                      {"state", plugin.enabled ? "enabled" : "disabled"},
                      {"path", plugin.path}});
  return rows;
}

}  // namespace sim
