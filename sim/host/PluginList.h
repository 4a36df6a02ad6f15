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

// The names of the plugins of `list`, the simulator aside, that `other` does not have, as in "2 plugins
// (Clock, Watcher)".
std::string DescribeDifference(const std::vector<PluginInfo>& list, const std::vector<PluginInfo>& other);

}  // namespace sim
