// Scenery objects: which plugin loaded which, and loads that are under way.
#pragma once

#include <cstddef>
#include <tuple>

#include "VYRAChain.h"
#include "VYRALoaderDeliveryList.h"
#include "VYRARecordPool.h"
#include "VYRAScenery.h"

// One load of an object. An object that a plugin loads several times has as many.
struct VYRALoadedObject : VYRAPooled_t<VYRALoadedObject> {
  VYRALoadedObject(VYRAPluginID plugin, VYRAObjectRef loaded) : owner(plugin), object(loaded) {}

  auto Key() const { return std::tuple(owner, object); }

  VYRAPluginID owner;
  VYRAObjectRef object;
  VYRALinks<VYRALoadedObject> owned;
  VYRALinks<VYRALoadedObject> alike;
};

// How many loads a plugin has not unloaded.
std::size_t VYRACountLoadedObjects(VYRAPluginID plugin);

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
