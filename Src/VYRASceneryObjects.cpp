#include "VYRASceneryObjects.h"

#include <memory>

#include "VYRAHostServices.h"
#include "VYRAKeyedRecords.h"
#include "VYRALoaderDeliveries.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderReports.h"
#include "VYRANeverDestroyed.h"
#include "VYRAOwnedRecords.h"
#include "VYRASceneryProbes.h"

namespace {

// Every load: those of a plugin, and those of one object by a plugin, in the order of loading.
VYRANeverDestroyed<VYRAOwnedRecords<VYRALoadedObject, &VYRALoadedObject::owned>> gLoadsOf;
VYRANeverDestroyed<VYRAKeyedRecords<VYRALoadedObject, &VYRALoadedObject::Key, &VYRALoadedObject::alike>>
    gLoads;

void NoteLoad(VYRAPluginID plugin, VYRAObjectRef object) {
  if (object == nullptr) return;
  auto* load = new VYRALoadedObject(plugin, object);
  gLoadsOf->AddLast(plugin, load);
  gLoads->AddLast(load);
}

// Forgets a load; its object is still loaded.
VYRAObjectRef Forget(VYRALoadedObject* load) {
  const std::unique_ptr<VYRALoadedObject> forgotten(load);
  gLoadsOf->Remove(load->owner, load);
  gLoads->Remove(load);
  return load->object;
}

// Notes a load when its callback has ended, also when that threw: nobody else would release the object.
class StNoteLoad {
 public:
  StNoteLoad(int owningPlugin, VYRAObjectRef loadedObject) : plugin(owningPlugin), object(loadedObject) {}
  ~StNoteLoad() { NoteLoad(plugin, object); }
  StNoteLoad(const StNoteLoad&) = delete;
  StNoteLoad& operator=(const StNoteLoad&) = delete;

 private:
  VYRAPluginID plugin;
  VYRAObjectRef object;
};

// The first of the calling plugin's loads of an object, or null.
VYRALoadedObject* CallersLoad(VYRAObjectRef object) {
  return gLoads->First({VYRAGetDispatchedPlugin(), object});
}

bool MayDraw(VYRAObjectRef object, int count, const VYRADrawInfo* locations) {
  if (CallersLoad(object) == nullptr) {
    VYRASendError("Illegal object, or object not owned by this plugin.");
    return false;
  }
  for (int i = 0; i < count; ++i) {
    if (locations[i].size == sizeof(VYRADrawInfo)) continue;
    VYRASendError("Struct size mismatch for VYRADrawObjects");
    return false;
  }
  return true;
}

}  // namespace

VYRAObjectRef VYRALoadObject(const char* path) {
  if (path == nullptr) return nullptr;
  const VYRAObjectRef object = gHooks->LoadObject(path);
  NoteLoad(VYRAGetDispatchedPlugin(), object);
  return object;
}

void VYRALoadObjectAsync(const char* path, VYRAObjectReady_f callback, void* refcon) {
  auto* load = new VYRAObjectCompletion_t(VYRAGetDispatchedPlugin(), callback, refcon);
  // First: the host may complete the load, and so end the record, before its service returns.
  VYRAQueueDelivery(load);
  if (path != nullptr) {
    gHooks->LoadObjectAsync(path, VYRAObjectCompletion_t::AsyncCB, load);
  } else {
    VYRAObjectCompletion_t::AsyncCB(nullptr, load);
  }
}

void VYRAObjectCompletion_t::AsyncCB(VYRAObjectRef object, void* record) {
  auto* load = static_cast<VYRAObjectCompletion_t*>(record);
  load->object = object;
  VYRASendDelivery(load);
}

void VYRAObjectCompletion_t::DeliverToPlugin(bool pluginGone) {
  const std::unique_ptr<VYRAObjectCompletion_t> self(this);
  if (pluginGone) {
    gHooks->UnloadObject(object);
    return;
  }
  // Kept: the object becomes the plugin's when its callback has returned, not before. Inside the callback it
  // cannot be unloaded yet, and plugins put that off until later.
  const StNoteLoad noteLoad(pluginID, object);
  if (callback != nullptr) callback(object, refcon);
}

void VYRADrawObjects(VYRAObjectRef object, int count, const VYRADrawInfo* locations, int lighting,
                     int earthRelative) {
  if (locations == nullptr) count = 0;
  // Kept: only a plugin that would hear of a mistake pays for looking for it.
  if (VYRAHasError() && !MayDraw(object, count, locations)) return;
  for (int i = 0; i < count; ++i) {
    const VYRADrawInfo& place = locations[i];
    // Kept: the record has the pitch in front of the heading, the host's service the heading in front.
    gHooks->DrawObjects(object, lighting, earthRelative, place.x, place.y, place.z, place.heading,
                        place.pitch, place.roll);
  }
}

void VYRAUnloadObject(VYRAObjectRef object) {
  VYRALoadedObject* load = CallersLoad(object);
  if (load == nullptr) {
    VYRASendError("Unknown object for VYRAUnloadObject");
    return;
  }
  gHooks->UnloadObject(Forget(load));
}

int VYRALookupObjects(const char* path, float latitude, float longitude, VYRALibraryEnumerator_f enumerator,
                      void* refcon) {
  // The host calls the enumerator itself, with the plugin's own refcon, so the whole look-up stands for it.
  const StDispatchCallback dispatch(gDispatchedPlugin, VYRA_CALL_ENUMERATOR,
                                    StDispatchCallback::Ask::nothing);
  return gHooks->LookupObjects(path, latitude, longitude, enumerator, refcon);
}

void VYRASceneryCleanupHook(VYRAPluginID plugin) {
  VYRASceneryDestroyProbesOf(plugin);
  // Each leaves the list before the host is told of it: releasing it may lead to calls that load and unload
  // more, and when an exception ends this, it can be called again for the others.
  for (std::size_t left = VYRACountLoadedObjects(plugin); left > 0; --left) {
    VYRALoadedObject* load = gLoadsOf->First(plugin);
    if (load == nullptr) return;
    gHooks->UnloadObject(Forget(load));
  }
}

std::size_t VYRACountLoadedObjects(VYRAPluginID plugin) {
  std::size_t count = 0;
  for (auto* load = gLoadsOf->First(plugin); load != nullptr; load = load->owned.next) ++count;
  return count;
}
