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
  int features[kFeatureCount] = {};
  VYRADeliveryHead pending;   // queued for this plugin, work not finished
  VYRADeliveryHead waiting;   // finished, waiting until the plugin is enabled
  bool inTransition = false;  // its enable callback, or the hooks before its disabling, run now
  bool stopped = false;       // its stop callback was called: it is on its way out for good
};

// The registry: a plugin's ID is its index, and the host is 0. It grows and shrinks through the functions
// below alone.
extern std::vector<PluginRecord> gAllPlugins;

// Whose code may be called: that of enabled plugins, and the host's even before it has a record. Indexed by
// the owner of a record: an ID that was given out once, or VYRA_NO_PLUGIN, who may not be called. It stands
// beside the plugins' records because every call into a plugin asks: one load answers. Hidden, as the two
// below, so that the code reaches it without a detour through the module's table of addresses.
[[gnu::visibility("hidden")]] extern const char* gCallable;

// The plugin on whose behalf the library runs now; 0 while no plugin's code runs.
[[gnu::visibility("hidden")]] extern VYRAPluginID gDispatchedPlugin;

// How many calls into plugins and the host are on the stack.
[[gnu::visibility("hidden")]] extern int gDispatchDepth;

VYRAPluginID VYRASetDispatchedPlugin(VYRAPluginID plugin);
VYRAPluginID VYRAGetDispatchedPlugin();

// Adds a plugin, which is not enabled yet, under the next ID.
PluginRecord& VYRARegistryAppend(PluginRecord record);
void VYRARegistryDropLast();
void VYRARegistryClear();

void VYRARegistrySetEnabled(VYRAPluginID plugin, bool enabled);

inline bool VYRARegistryHolds(VYRAPluginID plugin) {
  return static_cast<std::size_t>(plugin) < gAllPlugins.size();
}

inline PluginRecord& VYRARegistryRecord(VYRAPluginID plugin) {
  return gAllPlugins[static_cast<std::size_t>(plugin)];
}

inline bool VYRARegistryIsEnabled(VYRAPluginID plugin) {
  return VYRARegistryHolds(plugin) && gCallable[plugin] != 0;
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
        savedDepth(gDispatchDepth),
        mayCall(VYRARegistryIsEnabled(plugin) || (plugin == VYRA_HOST_PLUGIN && gAllPlugins.empty())) {
    gDispatchedPlugin = plugin;
    gDispatchDepth = savedDepth + 1;
  }
  ~StDispatchCallback() {
    gDispatchedPlugin = savedPlugin;
    gDispatchDepth = savedDepth;
  }
  StDispatchCallback(const StDispatchCallback&) = delete;
  StDispatchCallback& operator=(const StDispatchCallback&) = delete;

  bool operator()() const { return mayCall; }

 private:
  VYRAPluginID savedPlugin;
  int savedDepth;
  bool mayCall;
};

// The calls of one walk into many plugins: what stands for them all is saved and restored once.
//
//   StDispatchWalk dispatch;
//   while (Record* record = walk.Next())
//     if (dispatch(record->plugin)) record->callback(record->refcon);
class StDispatchWalk {
 public:
  StDispatchWalk() : savedPlugin(gDispatchedPlugin), savedDepth(gDispatchDepth) {
    gDispatchDepth = savedDepth + 1;
  }
  ~StDispatchWalk() {
    gDispatchedPlugin = savedPlugin;
    gDispatchDepth = savedDepth;
  }
  StDispatchWalk(const StDispatchWalk&) = delete;
  StDispatchWalk& operator=(const StDispatchWalk&) = delete;

  // Makes the owner of a record the dispatched plugin, in place of the last, and says whether it may be
  // called.
  bool operator()(VYRAPluginID plugin) const {
    gDispatchedPlugin = plugin;
    return gCallable[plugin] != 0;
  }

 private:
  VYRAPluginID savedPlugin;
  int savedDepth;
};
