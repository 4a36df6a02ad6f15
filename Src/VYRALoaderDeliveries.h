// Who gets a delivery, and when: its plugin while that is enabled, or else once it is; and when the plugin
// left, nobody, in which case the delivery is told so. Main thread only, as everything here.
#pragma once

#include "VYRALoaderDeliveryList.h"

// Notes a delivery whose work has begun with its plugin.
void VYRAQueueDelivery(VYRADelivery* delivery);

// The delivery's work has finished: hands it over, keeps it for its plugin, or tells it that the plugin
// is gone. The delivery disposes of itself.
void VYRASendDelivery(VYRADelivery* delivery);

// Hands a plugin what waits for it, as long as it is enabled.
void VYRADeliverWaiting(VYRAPluginID plugin);

// A plugin leaves: what is pending is orphaned, what waits is told at once.
void VYRASettleDeliveries(VYRAPluginID plugin);
