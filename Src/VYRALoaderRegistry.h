// The registry of plugins: who is loaded, and who may be called. Everything above uses it; it knows no
// subsystem.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "VYRALoaderDeliveryList.h"
#include "VYRAPlugin.h"

enum { kFeatureWantsReflections = 0, kFeatureNativePaths = 1, kFeatureCount = 2 };

// Where a plugin stands between the opening of its module and the closing. It only goes forward.
enum class PluginStage {
  opening,   // the constructors of its module run
  starting,  // its start callback runs
  loaded,    // it has started: it is enabled and disabled, as often as anybody likes
  leaving,   // it was turned down, or is being unloaded: it is not enabled any more
  closed     // its module is closed, or waits for that; nothing of it is called again
};

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
  VYRADeliveryHead pending;  // queued for this plugin, work not finished
  VYRADeliveryHead waiting;  // finished, waiting until the plugin is enabled
  PluginStage stage = PluginStage::loaded;
  bool inTransition = false;  // its enable callback, or the hooks before its disabling, run now
  bool givesIDBack = false;   // once closed and the last, its record goes and its ID is given out again,
  bool holdsID = false;       // though not yet: its code may be on the stack
};

// The registry: a plugin's ID is its index, and the host is 0. It grows and shrinks through the functions
// below alone.
extern std::vector<PluginRecord> gAllPlugins;

// Whose code may be called: that of enabled plugins, and the host's even before it has a record. Indexed by
// the owner of a record: an ID that was given out once, or VYRA_NO_PLUGIN, who may not be called. It stands
// beside the plugins' records because every call into a plugin asks: one load answers. Hidden, as those
// below, so that the code reaches it without a detour through the module's table of addresses.
[[gnu::visibility("hidden")]] extern const char* gCallable;

// Whose code may be called straight away, without a word to a watcher: the same as gCallable, or nobody's
// while there is one; and the same for accessors of datarefs, of which not every watcher wants to be told. So
// where calls must be quick, one load still answers.
[[gnu::visibility("hidden")]] extern const char* gUnwatched;
[[gnu::visibility("hidden")]] extern const char* gUnwatchedAccessors;
void VYRARegistryWatch(bool calls, bool accessors);

// Adds a plugin, which is not enabled yet, under the next ID.
PluginRecord& VYRARegistryAppend(PluginRecord record);
void VYRARegistryClear();

// Takes closed records off the end that give their IDs back.
void VYRARegistryDropClosed();

// Keeps the ID of a closed record from being given out again, for now.
void VYRARegistryHoldID(VYRAPluginID plugin, bool hold);

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

// Whether this is a plugin (not the host) whose module is open, or is being opened.
inline bool VYRARegistryIsOpen(VYRAPluginID plugin) {
  return plugin > 0 && VYRARegistryHolds(plugin) && VYRARegistryRecord(plugin).stage != PluginStage::closed;
}

// Whether this is a plugin (not the host) that is here to stay, or will be once it has started.
inline bool VYRARegistryStays(VYRAPluginID plugin) {
  return plugin > 0 && VYRARegistryHolds(plugin) && VYRARegistryRecord(plugin).stage < PluginStage::leaving;
}
