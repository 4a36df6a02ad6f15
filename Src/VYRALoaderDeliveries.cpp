#include "VYRALoaderDeliveries.h"

#include "VYRALoaderDispatch.h"
#include "VYRALoaderReports.h"
#include "VYRALoaderSteps.h"

namespace {

// Pending deliveries whose plugin left before their work had finished.
VYRADeliveryHead orphaned;

bool CanReceive(VYRAPluginID plugin) { return plugin == VYRA_HOST_PLUGIN || VYRARegistryStays(plugin); }

void Orphan(VYRADelivery& delivery) {
  delivery.pluginID = VYRA_NO_PLUGIN;
  VYRADeliveryEnqueue(orphaned, delivery);
}

void TellGone(VYRADelivery& delivery) {
  delivery.pluginID = VYRA_NO_PLUGIN;
  delivery.DeliverToPlugin(true);
}

}  // namespace

void VYRAQueueDelivery(VYRADelivery* delivery) {
  const VYRAPluginID plugin = delivery->pluginID;
  if (CanReceive(plugin) && VYRARegistryHolds(plugin)) {
    VYRADeliveryEnqueue(VYRARegistryRecord(plugin).pending, *delivery);
    return;
  }
  // By the time the work has finished, another plugin may have the ID. The host is always the same.
  if (plugin != VYRA_HOST_PLUGIN) Orphan(*delivery);
  if (!VYRARegistryHolds(plugin)) {
    VYRASendError("Internal error: async queue pending but the plugin ID is invalid.");
  }
}

void VYRASendDelivery(VYRADelivery* delivery) {
  VYRADeliveryDequeue(*delivery);
  const VYRAPluginID plugin = delivery->pluginID;
  if (!CanReceive(plugin)) {
    TellGone(*delivery);
    return;
  }
  const StDispatchCallback dispatch(plugin, VYRA_CALL_OBJECT);
  if (dispatch()) {
    delivery->DeliverToPlugin(false);
  } else if (VYRARegistryHolds(plugin)) {
    VYRADeliveryEnqueue(VYRARegistryRecord(plugin).waiting, *delivery);
  }
}

void VYRADeliverWaiting(VYRAPluginID plugin) {
  // One that throws keeps no other waiting: nobody would ask for those again.
  VYRALoaderSteps steps;
  // A delivery may disable its plugin or have it unloaded, so both are asked again each time.
  while (VYRARegistryIsEnabled(plugin)) {
    VYRADelivery* delivery = VYRADeliveryPop(VYRARegistryRecord(plugin).waiting);
    if (delivery == nullptr) break;
    steps.Take([&] {
      const StDispatchCallback dispatch(plugin, VYRA_CALL_OBJECT);
      delivery->DeliverToPlugin(false);
    });
  }
  steps.End();
}

void VYRASettleDeliveries(VYRAPluginID plugin) {
  if (!VYRARegistryHolds(plugin)) return;
  while (VYRADelivery* delivery = VYRADeliveryPop(VYRARegistryRecord(plugin).pending)) {
    Orphan(*delivery);
  }
  while (VYRARegistryHolds(plugin)) {
    VYRADelivery* delivery = VYRADeliveryPop(VYRARegistryRecord(plugin).waiting);
    if (delivery == nullptr) return;
    TellGone(*delivery);
  }
}
