#include "VYRALoaderDeliveries.h"

#include "VYRALoaderDispatch.h"
#include "VYRALoaderReports.h"

namespace {

// Pending deliveries whose plugin left before their work had finished.
VYRADeliveryHead orphaned;

bool CanReceive(int plugin) { return plugin == VYRA_HOST_PLUGIN || VYRARegistryIsLoaded(plugin); }

void TellGone(VYRADelivery& delivery) {
  delivery.pluginID = VYRA_NO_PLUGIN;
  delivery.DeliverToPlugin(true);
}

}  // namespace

void VYRAQueueDelivery(VYRADelivery* delivery) {
  if (!VYRARegistryHolds(delivery->pluginID)) {
    VYRASendError("Internal error: async queue pending but the plugin ID is invalid.");
    return;
  }
  VYRADeliveryEnqueue(VYRARegistryRecord(delivery->pluginID).pending, *delivery);
}

void VYRASendDelivery(VYRADelivery* delivery) {
  VYRADeliveryDequeue(*delivery);
  const int plugin = delivery->pluginID;
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

void VYRADeliverWaiting(int plugin) {
  // A delivery may disable its plugin or have it unloaded, so both are asked again each time.
  while (VYRARegistryIsEnabled(plugin)) {
    VYRADelivery* delivery = VYRADeliveryPop(VYRARegistryRecord(plugin).waiting);
    if (delivery == nullptr) return;
    const StDispatchCallback dispatch(plugin, VYRA_CALL_OBJECT);
    delivery->DeliverToPlugin(false);
  }
}

void VYRASettleDeliveries(int plugin) {
  if (!VYRARegistryHolds(plugin)) return;
  while (VYRADelivery* delivery = VYRADeliveryPop(VYRARegistryRecord(plugin).pending)) {
    delivery->pluginID = VYRA_NO_PLUGIN;
    VYRADeliveryEnqueue(orphaned, *delivery);
  }
  while (VYRARegistryHolds(plugin)) {
    VYRADelivery* delivery = VYRADeliveryPop(VYRARegistryRecord(plugin).waiting);
    if (delivery == nullptr) return;
    TellGone(*delivery);
  }
}
