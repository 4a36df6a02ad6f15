// Key sniffers, and the way of a keystroke: sniffers before the windows, hot keys, the window with keyboard
// focus, sniffers after the windows.
#include "VYRADisplayInternal.h"
#include "VYRADisplayRegistration.h"

VYRAResourceList<VYRAKeyCallbackRecord> gKeyCallbacks;

namespace {

VYRAKeyCallbackRecord* NewRecord(VYRAKeySniffer_f callback, int beforeWindows, void* refcon) {
  auto* record = new VYRAKeyCallbackRecord;
  record->callback = callback;
  record->owner = gDispatchedPlugin;
  record->beforeWindows = beforeWindows;
  record->refcon = refcon;
  return record;
}

struct Key {
  char key;
  int flags;
  char virtualKey;
};

// Whether a sniffer on this side of the windows consumed the key.
//
// Kept: the walk has no end, so the list's depth rises with every key, and removals wait for the end of the
// next registration, unregistration or cleanup; and only the sniffers before the windows are asked whether
// they are dead.
template <bool beforeWindows>
bool SnifferConsumes(const Key& pressed) {
  StDispatchWalk dispatch(VYRA_CALL_KEY_SNIFFER);
  VYRAResourceWalk<VYRAKeyCallbackRecord> walk(gKeyCallbacks);
  walk.LeaveOpen();
  const auto isMeant = [](const VYRAKeyCallbackRecord& record) {
    if ((record.beforeWindows != 0) != beforeWindows || record.callback == nullptr) return false;
    return !beforeWindows || !record.is_dead();
  };
  for (const VYRAKeyCallbackRecord& sniffer : walk.Where(isMeant)) {
    if (!dispatch(sniffer.owner)) continue;
    if (sniffer.callback(pressed.key, pressed.flags, pressed.virtualKey, sniffer.refcon) == 0) return true;
    dispatch.Ended();
  }
  return false;
}

// The window with keyboard focus consumes every key, whatever its callback returns.
bool FocusWindowConsumes(const Key& pressed) {
  VYRAWindowCallbackRecord* const window = gFocusWindow;
  if (window == nullptr) return false;
  const StDispatchCallback dispatch(window->owner, VYRA_CALL_WINDOW_KEY);
  if (!dispatch()) return false;
  if (window->handleKey != nullptr) {
    window->handleKey(window, pressed.key, pressed.flags, pressed.virtualKey, window->refcon, 0);
  }
  return true;
}

}  // namespace

int VYRARegisterKeySniffer(VYRAKeySniffer_f callback, int beforeWindows, void* refcon) {
  return VYRADisplayRegister(gKeyCallbacks, NewRecord(callback, beforeWindows, refcon));
}

int VYRAUnregisterKeySniffer(VYRAKeySniffer_f callback, int beforeWindows, void* refcon) {
  return VYRADisplayUnregister(gKeyCallbacks, NewRecord(callback, beforeWindows, refcon));
}

int VYRADisplayKeyPressHook(char key, int flags, char virtualKey) {
  if (key == 0 && flags == 0 && virtualKey == 0) return 1;
  const Key pressed = {key, flags, virtualKey};
  if (SnifferConsumes<true>(pressed)) return 0;
  if (VYRADispatchHotKey(virtualKey, flags)) return 0;
  if (FocusWindowConsumes(pressed)) return 0;
  return SnifferConsumes<false>(pressed) ? 0 : 1;
}
