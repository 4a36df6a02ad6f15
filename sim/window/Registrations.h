// What a plugin has registered, as `vyra-sim list` tells it: one line for each thing, by its kind.
#pragma once

#include <string>
#include <vector>

#include "host/PluginList.h"

namespace sim {

struct Registrations {
  const char* kind;  // "datarefs"
  std::vector<std::string> lines;
};

// All kinds, also those that it has nothing of. Asks the whole library: not for each frame. Between frames
// alone.
std::vector<Registrations> RegisteredBy(const PluginInfo& plugin);

}  // namespace sim
