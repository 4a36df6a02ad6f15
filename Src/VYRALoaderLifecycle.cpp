#include "VYRALoaderLifecycle.h"

#include <utility>

#include "VYRALoaderDeliveries.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderHostCalls.h"
#include "VYRALoaderLifecycleHooks.h"

std::vector<VYRAPluginID> gCurrentAircraftPluginIDS;

namespace {

// Marks a plugin as changing between enabled and disabled, so that the plugin's own call for the same
// change, made from inside it, does not start it again.
class StTransition {
 public:
  explicit StTransition(VYRAPluginID plugin) : id(plugin) { VYRARegistryRecord(id).inTransition = true; }
  ~StTransition() {
    if (VYRARegistryHolds(id)) VYRARegistryRecord(id).inTransition = false;
  }
  StTransition(const StTransition&) = delete;
  StTransition& operator=(const StTransition&) = delete;

 private:
  VYRAPluginID id;
};

int CallEnable(VYRAPluginID plugin) {
  const auto enable = VYRARegistryRecord(plugin).enable;
  if (enable == nullptr) return 1;
  const StTransition transition(plugin);
  const StDispatchCallback dispatch(plugin, VYRA_CALL_ENABLE, StDispatchCallback::Ask::nothing);
  return enable();
}

// A stop callback's run. From its end on the plugin is disabled, also when it threw and the rest of the
// unload is still to come.
class StStop {
 public:
  explicit StStop(VYRAPluginID plugin) : id(plugin) { VYRARegistryRecord(id).stopped = true; }
  ~StStop() {
    if (VYRARegistryHolds(id)) VYRARegistrySetEnabled(id, false);
  }
  StStop(const StStop&) = delete;
  StStop& operator=(const StStop&) = delete;

 private:
  VYRAPluginID id;
};

void CallStop(VYRAPluginID plugin) {
  const StStop stopping(plugin);
  // Taken before the call: whatever the callback leads to, it is not called a second time.
  const auto stop = std::exchange(VYRARegistryRecord(plugin).stop, nullptr);
  if (stop == nullptr) return;
  const StDispatchCallback dispatch(plugin, VYRA_CALL_STOP, StDispatchCallback::Ask::nothing);
  stop();
}

// Empties a record of everything that points into its module or names it as loaded. The name and the
// description stay, so that a log line can still say who was there.
void* ForgetModule(VYRAPluginID plugin) {
  VYRARegistrySetEnabled(plugin, false);
  PluginRecord& record = VYRARegistryRecord(plugin);
  record.stop = nullptr;
  record.enable = nullptr;
  record.disable = nullptr;
  record.receiveMessage = nullptr;
  record.error = nullptr;
  record.path.clear();
  record.signature.clear();
  return std::exchange(record.moduleHandle, nullptr);
}

}  // namespace

int VYRAEnablePlugin(VYRAPluginID plugin) {
  if (!VYRARegistryIsLoaded(plugin)) return 0;
  if (!VYRARegistryIsEnabled(plugin)) {
    if (VYRARegistryRecord(plugin).inTransition || VYRARegistryRecord(plugin).stopped) return 0;
    const bool accepted = CallEnable(plugin) != 0;
    if (!VYRARegistryIsLoaded(plugin)) return 0;
    VYRARegistrySetEnabled(plugin, accepted);
  }
  VYRADeliverWaiting(plugin);
  return VYRAIsPluginEnabled(plugin);
}

void VYRADisablePlugin(VYRAPluginID plugin) {
  if (!VYRARegistryIsLoaded(plugin)) return;
  if (!VYRARegistryIsEnabled(plugin) || VYRARegistryRecord(plugin).inTransition) return;
  {
    const StTransition transition(plugin);
    VYRALoaderRunDisableHooks(plugin);
  }
  if (!VYRARegistryIsEnabled(plugin)) return;
  VYRARegistrySetEnabled(plugin, false);
  const auto disable = VYRARegistryRecord(plugin).disable;
  if (disable == nullptr) return;
  const StDispatchCallback dispatch(plugin, VYRA_CALL_DISABLE, StDispatchCallback::Ask::nothing);
  disable();
}

// The loops below read the registry's size anew in each round: the plugins they call may load more.

void VYRAEnableAllPlugins() {
  for (VYRAPluginID plugin = 0; plugin < VYRACountPlugins(); ++plugin) VYRAEnablePlugin(plugin);
}

void VYRADisableAllPlugins() {
  for (VYRAPluginID plugin = 0; plugin < VYRACountPlugins(); ++plugin) VYRADisablePlugin(plugin);
}

void VYRAEnableACFPlugins() {
  for (std::size_t i = 0; i < gCurrentAircraftPluginIDS.size(); ++i) {
    VYRAEnablePlugin(gCurrentAircraftPluginIDS[i]);
  }
}

void VYRADisableACFPlugins() {
  for (std::size_t i = 0; i < gCurrentAircraftPluginIDS.size(); ++i) {
    VYRADisablePlugin(gCurrentAircraftPluginIDS[i]);
  }
}

void UnloadOnePlugin(VYRAPluginID plugin) {
  VYRALoaderCloseModule(VYRALoaderRemovePlugin(plugin, true), plugin);
}

void* VYRALoaderRemovePlugin(VYRAPluginID plugin, bool owesStop) {
  if (plugin == VYRA_HOST_PLUGIN || !VYRARegistryHolds(plugin)) return nullptr;
  VYRASettleDeliveries(plugin);
  if (owesStop && VYRARegistryIsLoaded(plugin)) CallStop(plugin);
  if (!VYRARegistryHolds(plugin)) return nullptr;
  // Not enabled from here on, so that no hook calls into the plugin again; and the stop callback may have
  // asked for more deliveries.
  VYRARegistrySetEnabled(plugin, false);
  VYRASettleDeliveries(plugin);
  VYRALoaderRunCleanupHooks(plugin);
  return VYRARegistryHolds(plugin) ? ForgetModule(plugin) : nullptr;
}

void VYRALoaderDropLastRecord(VYRAPluginID plugin) {
  if (plugin != VYRACountPlugins() - 1 || VYRARegistryIsLoaded(plugin)) return;
  VYRARegistryDropLast();
}

void VYRAUnloadPlugins() {
  for (VYRAPluginID plugin = VYRA_HOST_PLUGIN + 1; plugin < VYRACountPlugins(); ++plugin) {
    UnloadOnePlugin(plugin);
  }
  VYRASettleDeliveries(VYRA_HOST_PLUGIN);
  VYRARegistryClear();
  gCurrentAircraftPluginIDS.clear();
}

void VYRAUnloadAcfPlugin() {
  for (std::size_t i = 0; i < gCurrentAircraftPluginIDS.size(); ++i) {
    UnloadOnePlugin(gCurrentAircraftPluginIDS[i]);
  }
  // Inside a plugin's code the records keep their places: code of theirs may still be on the stack, and
  // what it registers on its way out must not fall to a new plugin with the same ID.
  while (!VYRALoaderIsNested() && !gCurrentAircraftPluginIDS.empty()) {
    const VYRAPluginID last = VYRACountPlugins() - 1;
    if (std::erase(gCurrentAircraftPluginIDS, last) == 0) break;
    VYRALoaderDropLastRecord(last);
  }
  gCurrentAircraftPluginIDS.clear();
}
