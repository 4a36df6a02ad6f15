// The registry of plugins and the dispatched plugin: who is loaded, and on whose behalf code runs now.
// Everything above uses it; it knows no subsystem.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "VYRALoaderDeliveryList.h"
#include "VYRAPlugin.h"

enum { kFeatureWantsReflections = 0, kFeatureNativePaths = 1, kFeatureCount = 2 };

// One plugin. A record whose module was closed but which keeps its place in the registry has no module, no
// callbacks, no signature and no path: nothing of it is called, found or taken for a duplicate again.
//
// Records move when the registry grows. Code that calls a plugin therefore reads what it needs before the
// call and looks the record up by its ID again afterwards.
struct PluginRecord {
  void* moduleHandle = nullptr;  // null for the host, and once the module is closed
  std::string name;
  std::string path;
  std::string signature;
  std::string description;
  void (*stop)() = nullptr;
  int (*enable)() = nullptr;
  void (*disable)() = nullptr;
  void (*receiveMessage)(VYRAPluginID fromPlugin, int message, void* param) = nullptr;
  VYRAError_f error = nullptr;
  bool enabled = false;
  int features[kFeatureCount] = {};
  VYRADeliveryHead pending;   // queued for this plugin, work not finished
  VYRADeliveryHead waiting;   // finished, waiting until the plugin is enabled
  bool inTransition = false;  // its enable callback, or the hooks before its disabling, run now
  bool stopped = false;       // its stop callback was called: it is on its way out for good
};

// The registry: a plugin's ID is its index, and the host is 0.
extern std::vector<PluginRecord> gAllPlugins;

// The plugin on whose behalf the library runs now; 0 while no plugin's code runs.
extern VYRAPluginID gDispatchedPlugin;

// How many calls into plugins and the host are on the stack.
extern int gDispatchDepth;

VYRAPluginID VYRASetDispatchedPlugin(VYRAPluginID plugin);
VYRAPluginID VYRAGetDispatchedPlugin();

inline bool VYRARegistryHolds(VYRAPluginID plugin) {
  return static_cast<std::size_t>(plugin) < gAllPlugins.size();
}

inline PluginRecord& VYRARegistryRecord(VYRAPluginID plugin) {
  return gAllPlugins[static_cast<std::size_t>(plugin)];
}

inline bool VYRARegistryIsEnabled(VYRAPluginID plugin) {
  return VYRARegistryHolds(plugin) && VYRARegistryRecord(plugin).enabled;
}

// Whether this is a plugin (not the host) with an open module.
inline bool VYRARegistryIsLoaded(VYRAPluginID plugin) {
  return plugin > 0 && VYRARegistryHolds(plugin) && VYRARegistryRecord(plugin).moduleHandle != nullptr;
}

// A call into a plugin: makes it the dispatched plugin while the scope lasts, and says whether it may be
// called. Before anything is loaded the host, and nobody else, may be.
class StDispatchCallback {
 public:
  explicit StDispatchCallback(VYRAPluginID plugin)
      : savedPlugin(gDispatchedPlugin),
        mayCall(VYRARegistryIsEnabled(plugin) || (plugin == VYRA_HOST_PLUGIN && gAllPlugins.empty())) {
    gDispatchedPlugin = plugin;
    ++gDispatchDepth;
  }
  ~StDispatchCallback() {
    gDispatchedPlugin = savedPlugin;
    --gDispatchDepth;
  }
  StDispatchCallback(const StDispatchCallback&) = delete;
  StDispatchCallback& operator=(const StDispatchCallback&) = delete;

  bool operator()() const { return mayCall; }

 private:
  VYRAPluginID savedPlugin;
  bool mayCall;
};
