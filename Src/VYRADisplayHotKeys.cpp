// Hot keys: bound by one plugin, listed and rebound by any, fired from the way of a keystroke.
//
// Kept: the walks are paired unevenly. Looking a hot key up, counting, enumerating and firing raise the
// list's depth and leave it raised; registering lowers it without having raised it. So a removal mostly
// waits for the end of its own unregistration, after which the hot key is gone whatever the depth.
#include "VYRADisplayInternal.h"
#include "VYRASequence.h"
#include "VYRAStrings.h"

VYRAResourceList<VYRAHotKeyInfoRecord> gHotKeys;

namespace {

// From the oldest, which is the last of the list, to the newest.
VYRASequence<VYRAHotKeyInfoRecord, &VYRAHotKeyInfoRecord::slot> gHotKeyOrder;

}  // namespace

VYRAHotKeyInfoRecord::VYRAHotKeyInfoRecord() { gHotKeyOrder.Append(this); }

VYRAHotKeyInfoRecord::~VYRAHotKeyInfoRecord() { gHotKeyOrder.Remove(this); }

namespace {

VYRAHotKeyInfoRecord* VYRAValidateHotKey(VYRAHotKeyID hotKey) {
  gHotKeys.BeginIterate();
  return gHotKeys.Get(hotKey);
}

bool Fires(const VYRAHotKeyInfoRecord& record, char virtualKey, int flags) {
  return record.virtualKey == virtualKey && record.flags == flags && !record.is_dead() &&
         record.callback != nullptr;
}

}  // namespace

VYRAHotKeyID VYRARegisterHotKey(char virtualKey, int flags, const char* description, VYRAHotKey_f callback,
                                void* refcon) {
  auto* record = new VYRAHotKeyInfoRecord;
  record->owner = gDispatchedPlugin;
  record->virtualKey = virtualKey;
  record->flags = flags;
  if (description != nullptr) record->description = description;
  record->callback = callback;
  record->refcon = refcon;
  gHotKeys.Add(record);
  gHotKeys.EndIterate();
  return record;
}

void VYRAUnregisterHotKey(VYRAHotKeyID hotKey) {
  if (VYRAHotKeyInfoRecord* record = VYRAValidateHotKey(hotKey)) gHotKeys.Remove(record);
  gHotKeys.EndIterate();
}

int VYRACountHotKeys(void) {
  gHotKeys.BeginIterate();
  return static_cast<int>(gHotKeyOrder.Count());
}

VYRAHotKeyID VYRAGetNthHotKey(int index) {
  gHotKeys.BeginIterate();
  const auto count = static_cast<int>(gHotKeyOrder.Count());
  if (index < 0 || index >= count) return nullptr;
  return gHotKeyOrder.At(static_cast<std::size_t>(count - 1 - index));
}

void VYRAGetHotKeyInfo(VYRAHotKeyID hotKey, char* outVirtualKey, int* outFlags, char* outDescription,
                       VYRAPluginID* outPlugin) {
  const VYRAHotKeyInfoRecord* record = VYRAValidateHotKey(hotKey);
  if (record == nullptr) return;
  if (outVirtualKey != nullptr) *outVirtualKey = record->virtualKey;
  if (outFlags != nullptr) *outFlags = record->flags;
  strcpytrunc(outDescription, record->description, VYRA_HOT_KEY_DESCRIPTION_SIZE);
  if (outPlugin != nullptr) *outPlugin = record->owner;
}

void VYRASetHotKeyCombination(VYRAHotKeyID hotKey, char virtualKey, int flags) {
  VYRAHotKeyInfoRecord* record = VYRAValidateHotKey(hotKey);
  if (record == nullptr) return;
  record->virtualKey = virtualKey;
  record->flags = flags;
}

bool VYRADispatchHotKey(char virtualKey, int flags) {
  VYRAResourceWalk<VYRAHotKeyInfoRecord> walk(gHotKeys);
  while (const VYRAHotKeyInfoRecord* record = walk.Next()) {
    if (!Fires(*record, virtualKey, flags)) continue;
    const StDispatchCallback dispatch(record->owner, VYRA_CALL_HOT_KEY);
    if (!dispatch()) continue;
    walk.LeaveOpen();
    record->callback(record->refcon);
    return true;
  }
  return false;
}
