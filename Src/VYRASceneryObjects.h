// Scenery objects: which plugin loaded which, and loads that are under way.
#pragma once

#include <map>
#include <vector>

#include "VYRALoaderDeliveryList.h"
#include "VYRAScenery.h"

// The objects of each plugin in the order of loading, each as often as it was loaded.
extern std::map<VYRAPluginID, std::vector<VYRAObjectRef>> gObjects;

// An asynchronous load on its way to the plugin that asked for it.
class VYRAObjectCompletion_t final : public VYRADelivery {
 public:
  VYRAObjectCompletion_t(VYRAPluginID plugin, VYRAObjectReady_f readyCallback, void* callbackRefcon)
      : VYRADelivery(plugin), callback(readyCallback), refcon(callbackRefcon) {}

  // What the host calls, once, with the object that it loaded, or null, and the record. The record may be
  // gone afterwards, so nobody can tell a second call for it from a first one.
  static void AsyncCB(VYRAObjectRef object, void* record);

  void DeliverToPlugin(bool pluginGone) override;

 private:
  VYRAObjectReady_f callback;
  void* refcon;
  VYRAObjectRef object = nullptr;
};

// A plugin leaves: its probes go, and its objects are released.
void VYRASceneryCleanupHook(VYRAPluginID plugin);
