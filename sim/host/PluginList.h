// What the library's registry says of the plugins at one moment.
#pragma once

#include <string>
#include <vector>

#include "VYRAPlugin.h"

namespace sim {

struct PluginInfo {
  VYRAPluginID id;
  std::string name;
  std::string signature;  // empty for the simulator itself
  std::string path;       // of its module
  bool enabled;
};

// In the order of their IDs, the simulator first.
std::vector<PluginInfo> ListPlugins();

// Whoever calls a service, by the path of its module: empty for the simulator itself. Unlike a signature it
// is known in the plugin's start already, and unlike an ID it is never another plugin's.
std::string CallerPath();

// The signature of a plugin, or "simulator" for the simulator itself. A plugin that is not loaded any more
// goes by its path.
std::string OwnerOf(VYRAPluginID plugin);
std::string OwnerOfPath(const std::string& path);

// The names of the plugins of `list`, the simulator aside, that `other` does not have, as in "2 plugins
// (Clock, Watcher)".
std::string DescribeDifference(const std::vector<PluginInfo>& list, const std::vector<PluginInfo>& other);

}  // namespace sim
