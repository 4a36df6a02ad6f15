#include "VYRALoaderRegistry.h"

#include <algorithm>
#include <utility>

std::vector<PluginRecord> gAllPlugins;

namespace {

// What gCallable points into: the first flag is VYRA_NO_PLUGIN's, the next the host's. They never become
// fewer, as an ID that was given out may be asked about when its plugin is gone.
std::vector<char> gCallableFlags(256);

// As many flags, none of which is ever set.
std::vector<char> gNobodyFlags(256);

bool gCallsAreWatched = false;
bool gAccessorsAreWatched = false;

const char* AllowHostAlone() {
  std::fill(gCallableFlags.begin(), gCallableFlags.end(), char{0});
  gCallableFlags[1] = 1;
  return &gCallableFlags[1];
}

void PointAtFlags() {
  gCallable = &gCallableFlags[1];
  gUnwatched = gCallsAreWatched ? &gNobodyFlags[1] : gCallable;
  gUnwatchedAccessors = gAccessorsAreWatched ? &gNobodyFlags[1] : gCallable;
}

VYRAPluginID LastPlugin() { return static_cast<VYRAPluginID>(gAllPlugins.size()) - 1; }

}  // namespace

const char* gCallable = AllowHostAlone();
const char* gUnwatched = gCallable;
const char* gUnwatchedAccessors = gCallable;

void VYRARegistryWatch(bool calls, bool accessors) {
  gCallsAreWatched = calls;
  gAccessorsAreWatched = accessors;
  PointAtFlags();
}

PluginRecord& VYRARegistryAppend(PluginRecord record) {
  gAllPlugins.push_back(std::move(record));
  if (gCallableFlags.size() <= gAllPlugins.size()) {
    gCallableFlags.resize(2 * gCallableFlags.size());
    gNobodyFlags.resize(gCallableFlags.size());
    PointAtFlags();
  }
  VYRARegistrySetEnabled(LastPlugin(), false);
  return gAllPlugins.back();
}

void VYRARegistryDropClosed() {
  while (!gAllPlugins.empty()) {
    const PluginRecord& last = gAllPlugins.back();
    if (last.stage != PluginStage::closed || !last.givesIDBack || last.holdsID) return;
    gAllPlugins.pop_back();
  }
}

void VYRARegistryHoldID(VYRAPluginID plugin, bool hold) {
  if (VYRARegistryHolds(plugin)) VYRARegistryRecord(plugin).holdsID = hold;
}

void VYRARegistryClear() {
  gAllPlugins.clear();
  AllowHostAlone();
}

void VYRARegistrySetEnabled(VYRAPluginID plugin, bool enabled) {
  gCallableFlags[static_cast<std::size_t>(plugin) + 1] = enabled ? 1 : 0;
}
