#include "VYRALoaderLifecycle.h"

#include <utility>

#include "VYRALoaderDeliveries.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderHostCalls.h"
#include "VYRALoaderLifecycleHooks.h"
#include "VYRALoaderState.h"
#include "VYRALoaderSteps.h"

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

// While its module is opened, nothing is known of a plugin that could be enabled.
bool MayBeEnabled(VYRAPluginID plugin) {
  return VYRARegistryStays(plugin) && VYRARegistryRecord(plugin).stage != PluginStage::opening;
}

int CallEnable(VYRAPluginID plugin) {
  const auto enable = VYRARegistryRecord(plugin).enable;
  if (enable == nullptr) return 1;
  const StTransition transition(plugin);
  const StDispatchCallback dispatch(plugin, VYRA_CALL_ENABLE, StDispatchCallback::Ask::nothing);
  return enable();
}

void CallDisable(VYRAPluginID plugin) {
  const auto disable = VYRARegistryRecord(plugin).disable;
  if (disable == nullptr) return;
  const StDispatchCallback dispatch(plugin, VYRA_CALL_DISABLE, StDispatchCallback::Ask::nothing);
  disable();
}

// A stop callback's run. From its end on the plugin is disabled, also when it threw and the rest of the
// unload is still to come.
class StStop {
 public:
  explicit StStop(VYRAPluginID plugin) : id(plugin) {}
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
ClosingModule ForgetModule(VYRAPluginID plugin) {
  PluginRecord& record = VYRARegistryRecord(plugin);
  record.stage = PluginStage::closed;
  record.stop = nullptr;
  record.enable = nullptr;
  record.disable = nullptr;
  record.receiveMessage = nullptr;
  record.error = nullptr;
  record.path.clear();
  return {std::exchange(record.moduleHandle, nullptr), plugin, std::exchange(record.signature, {})};
}

}  // namespace

int VYRAEnablePlugin(VYRAPluginID plugin) {
  if (!MayBeEnabled(plugin)) return 0;
  if (!VYRARegistryIsEnabled(plugin)) {
    if (VYRARegistryRecord(plugin).inTransition) return 0;
    const bool accepted = CallEnable(plugin) != 0;
    if (!MayBeEnabled(plugin)) return 0;
    VYRARegistrySetEnabled(plugin, accepted);
  }
  VYRADeliverWaiting(plugin);
  return VYRAIsPluginEnabled(plugin);
}

void VYRADisablePlugin(VYRAPluginID plugin) {
  if (plugin <= VYRA_HOST_PLUGIN || !VYRARegistryIsEnabled(plugin)) return;
  if (VYRARegistryRecord(plugin).inTransition) return;
  // All of it is done before an exception goes on: else one that takes something back whenever it loses it,
  // and throws, would never be disabled.
  VYRALoaderSteps steps;
  steps.Take([&] {
    const StTransition transition(plugin);
    VYRALoaderRunDisableHooks(plugin);
  });
  if (VYRARegistryIsEnabled(plugin)) {
    VYRARegistrySetEnabled(plugin, false);
    steps.Take([&] { CallDisable(plugin); });
    // What it took back in these calls is taken again. As it is not enabled any more, it is not told.
    if (!VYRARegistryIsEnabled(plugin)) steps.Take([&] { VYRALoaderRunDisableHooks(plugin); });
  }
  steps.End();
}

// One plugin that throws keeps no other from being enabled. What takes plugins down, in contrast, ends with
// the first exception: the host calls it again, and it goes on from there.

void VYRAEnableAllPlugins() {
  VYRALoaderSteps steps;
  // The size is read anew in each round: the plugins that are called may load more.
  for (VYRAPluginID plugin = 0; plugin < VYRACountPlugins(); ++plugin) {
    steps.Take([&] { VYRAEnablePlugin(plugin); });
  }
  steps.End();
}

void VYRADisableAllPlugins() {
  for (VYRAPluginID plugin = 0; plugin < VYRACountPlugins(); ++plugin) VYRADisablePlugin(plugin);
}

void VYRAEnablePlugins(const std::vector<VYRAPluginID>& plugins) {
  VYRALoaderSteps steps;
  for (const VYRAPluginID plugin : plugins) {
    steps.Take([&] { VYRAEnablePlugin(plugin); });
  }
  steps.End();
}

// The aircraft's plugins of the moment: the calls may lead to another aircraft.

void VYRAEnableACFPlugins() { VYRAEnablePlugins(std::vector(gCurrentAircraftPluginIDS)); }

void VYRADisableACFPlugins() {
  for (const VYRAPluginID plugin : std::vector(gCurrentAircraftPluginIDS)) VYRADisablePlugin(plugin);
}

void UnloadOnePlugin(VYRAPluginID plugin) { VYRALoaderCloseModule(VYRALoaderRemovePlugin(plugin, true)); }

ClosingModule VYRALoaderRemovePlugin(VYRAPluginID plugin, bool owesStop) {
  if (!VYRARegistryIsOpen(plugin)) return {};
  VYRARegistryRecord(plugin).stage = PluginStage::leaving;
  VYRASettleDeliveries(plugin);
  if (owesStop && VYRARegistryIsOpen(plugin)) CallStop(plugin);
  // A shutdown meanwhile has taken the record.
  if (!VYRARegistryHolds(plugin)) return {};
  // Not enabled from here on, so that no hook calls into the plugin again; and the stop callback may have
  // left deliveries.
  VYRARegistrySetEnabled(plugin, false);
  VYRASettleDeliveries(plugin);
  VYRALoaderRunCleanupHooks(plugin);
  return VYRARegistryIsOpen(plugin) ? ForgetModule(plugin) : ClosingModule();
}

void VYRALoaderGiveBackID(VYRAPluginID plugin) {
  if (VYRARegistryHolds(plugin)) VYRARegistryRecord(plugin).givesIDBack = true;
  VYRARegistryDropClosed();
}

void VYRAUnloadPlugins() {
  const StLoaderWork working;
  const int count = VYRACountPlugins();
  for (VYRAPluginID plugin = VYRA_HOST_PLUGIN + 1; plugin < count; ++plugin) UnloadOnePlugin(plugin);
  // Stop callbacks may have had plugins loaded. These are unloaded too, and may have none loaded in turn, or
  // two of them could go on for ever.
  const StRefuseLoading refusing;
  for (VYRAPluginID plugin = count; plugin < VYRACountPlugins(); ++plugin) UnloadOnePlugin(plugin);
  VYRASettleDeliveries(VYRA_HOST_PLUGIN);
  if (!VYRALoaderIsNested()) VYRALoaderFreeWaitingIDs();
  VYRARegistryClear();
  gCurrentAircraftPluginIDS.clear();
  VYRALoaderRunCleanupHooks(VYRA_NO_PLUGIN);  // of what destructors of modules registered
}

void VYRAUnloadAcfPlugin() {
  const StLoaderWork working;
  // Those of the moment: a stop callback may lead to another aircraft.
  const std::vector<VYRAPluginID> leaving = gCurrentAircraftPluginIDS;
  for (const VYRAPluginID plugin : leaving) UnloadOnePlugin(plugin);
  for (const VYRAPluginID plugin : leaving) {
    if (std::erase(gCurrentAircraftPluginIDS, plugin) > 0) VYRALoaderGiveBackID(plugin);
  }
}
