// What becomes of a leaving plugin's datarefs and of its subscriptions to shared data.
#include "VYRADataAccessInternal.h"
#include "VYRADataAccessShared.h"

void VYRADataRefsCleanupHook(VYRAPluginID plugin) {
  while (VYRAData_t* record = gOwnedDataRefs.First(plugin)) VYRADataAccessSetOwner(record, VYRA_NO_PLUGIN);
  VYRASharedDataForget(plugin);
}
