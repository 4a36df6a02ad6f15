// Windows: their records, their order and keyboard focus. What the mouse and the frame do with them stands in
// VYRADisplayWindowInput.cpp.
#include "VYRADisplayInternal.h"
#include "VYRAHostServices.h"

VYRAResourceList<VYRAWindowCallbackRecord> gWindows;
VYRAWindowCallbackRecord* gFocusWindow = nullptr;
VYRAWindowCallbackRecord* gDragWindow = nullptr;

namespace {

// Stands on a window while plugins are called, and knows afterwards whether it is still there: a handle that
// was freed meanwhile may already be another window's.
class StWindow {
 public:
  explicit StWindow(VYRAWindowID window) : walk(gWindows) {
    while (found != window || window == nullptr) {
      found = walk.Next();
      if (found == nullptr) return;
    }
  }
  VYRAWindowCallbackRecord* Get() const { return walk.HoldsRecord() && !found->is_dead() ? found : nullptr; }

 private:
  VYRAResourceWalk<VYRAWindowCallbackRecord> walk;
  VYRAWindowCallbackRecord* found = nullptr;
};

// The window, if the handle is one. Windows whose removal is still pending are freed first: this walk's own
// end would free them and leave the caller with the remains.
VYRAWindowCallbackRecord* VYRAWindowIsValid(VYRAWindowID window) {
  gWindows.BeginIterate();
  gWindows.EndIterate();
  VYRAResourceWalk<VYRAWindowCallbackRecord> walk(gWindows);
  while (VYRAWindowCallbackRecord* record = walk.Next()) {
    if (record == window) return record;
  }
  return nullptr;
}

// The window that is being told that it loses focus. It is told once, also when it moves the focus itself.
const VYRAWindowCallbackRecord* gLosingWindow = nullptr;

class StLosingFocus {
 public:
  explicit StLosingFocus(const VYRAWindowCallbackRecord* loser) : saved(gLosingWindow) {
    gLosingWindow = loser;
  }
  ~StLosingFocus() { gLosingWindow = saved; }
  StLosingFocus(const StLosingFocus&) = delete;
  StLosingFocus& operator=(const StLosingFocus&) = delete;

 private:
  const VYRAWindowCallbackRecord* saved;
};

void TellLosingFocus(VYRAWindowID taker) {
  VYRAWindowCallbackRecord* const loser = gFocusWindow;
  if (loser == nullptr || loser == gLosingWindow || loser->handleKey == nullptr) return;
  const StLosingFocus losing(loser);
  const StDispatchCallback dispatch(loser->owner, VYRA_CALL_WINDOW_KEY);
  // Kept: the first argument is the window that takes focus, as plugins rely on it.
  if (dispatch()) loser->handleKey(taker, 0, 0, 0, loser->refcon, 1);
}

VYRAWindowID AddWindow(const VYRAWindowCreateParams& params) {
  auto* window = new VYRAWindowCallbackRecord;
  window->left = params.left;
  window->top = params.top;
  window->right = params.right;
  window->bottom = params.bottom;
  window->visible = params.visible;
  window->draw = params.draw;
  window->handleKey = params.handleKey;
  window->handleMouseClick = params.handleMouseClick;
  window->handleCursor = params.handleCursor;
  window->handleMouseWheel = params.handleMouseWheel;
  window->owner = gDispatchedPlugin;
  window->refcon = params.refcon;
  gWindows.Add(window);
  return window;
}

void RemoveWindow(VYRAWindowCallbackRecord* window) {
  if (gFocusWindow == window) gFocusWindow = nullptr;
  if (gDragWindow == window) gDragWindow = nullptr;
  gWindows.Remove(window);
}

}  // namespace

VYRAWindowID VYRACreateWindow(int left, int top, int right, int bottom, int visible, VYRADrawWindow_f draw,
                              VYRAHandleKey_f handleKey, VYRAHandleMouseClick_f handleMouseClick,
                              void* refcon) {
  return AddWindow({sizeof(VYRAWindowCreateParams), left, top, right, bottom, visible, draw, handleMouseClick,
                    handleKey, nullptr, nullptr, refcon});
}

VYRAWindowID VYRACreateWindowEx(const VYRAWindowCreateParams* params) {
  if (params == nullptr || params->structSize != static_cast<int>(sizeof(*params))) return nullptr;
  return AddWindow(*params);
}

void VYRADestroyWindow(VYRAWindowID window) {
  VYRAWindowCallbackRecord* record = VYRAWindowIsValid(window);
  if (record == nullptr) return;
  if (gFocusWindow == record) {
    const StWindow standing(window);
    VYRATakeKeyboardFocus(nullptr);
    record = standing.Get();
  }
  if (record != nullptr) RemoveWindow(record);
}

void VYRAGetWindowGeometry(VYRAWindowID window, int* outLeft, int* outTop, int* outRight, int* outBottom) {
  const VYRAWindowCallbackRecord* record = VYRAWindowIsValid(window);
  if (record == nullptr) return;
  if (outLeft != nullptr) *outLeft = record->left;
  if (outTop != nullptr) *outTop = record->top;
  if (outRight != nullptr) *outRight = record->right;
  if (outBottom != nullptr) *outBottom = record->bottom;
}

void VYRASetWindowGeometry(VYRAWindowID window, int left, int top, int right, int bottom) {
  VYRAWindowCallbackRecord* record = VYRAWindowIsValid(window);
  if (record == nullptr) return;
  record->left = left;
  record->top = top;
  record->right = right;
  record->bottom = bottom;
}

int VYRAGetWindowIsVisible(VYRAWindowID window) {
  const VYRAWindowCallbackRecord* record = VYRAWindowIsValid(window);
  return record != nullptr ? record->visible : 0;
}

void VYRASetWindowIsVisible(VYRAWindowID window, int visible) {
  VYRAWindowCallbackRecord* record = VYRAWindowIsValid(window);
  if (record == nullptr) return;
  if (record->visible != 0 && visible == 0 && gFocusWindow == record) {
    const StWindow standing(window);
    VYRATakeKeyboardFocus(nullptr);
    record = standing.Get();
  }
  if (record != nullptr) record->visible = visible;
}

void* VYRAGetWindowRefCon(VYRAWindowID window) {
  const VYRAWindowCallbackRecord* record = VYRAWindowIsValid(window);
  return record != nullptr ? record->refcon : nullptr;
}

void VYRASetWindowRefCon(VYRAWindowID window, void* refcon) {
  VYRAWindowCallbackRecord* record = VYRAWindowIsValid(window);
  if (record != nullptr) record->refcon = refcon;
}

void VYRATakeKeyboardFocus(VYRAWindowID window) {
  const VYRAWindowCallbackRecord* taker = VYRAWindowIsValid(window);
  if (taker == gFocusWindow) return;
  if (taker != nullptr && !VYRARegistryIsEnabled(taker->owner)) return;
  const StWindow standing(window);
  TellLosingFocus(window);
  gFocusWindow = standing.Get();
}

void VYRABringWindowToFront(VYRAWindowID window) {
  if (VYRAWindowCallbackRecord* record = VYRAWindowIsValid(window)) gWindows.MoveToFront(record);
}

int VYRAIsWindowInFront(VYRAWindowID window) {
  if (VYRAWindowIsValid(window) == nullptr) return 0;
  VYRAResourceWalk<VYRAWindowCallbackRecord> walk(gWindows);
  while (const VYRAWindowCallbackRecord* record = walk.Next()) {
    if (record->visible != 0) return record == window ? 1 : 0;
  }
  return 0;
}

void VYRAGetScreenSize(int* outWidth, int* outHeight) { gHooks->GetScreenSize(outWidth, outHeight); }

void VYRAGetMouseLocation(int* outX, int* outY) { gHooks->GetMouseLocation(outX, outY, 1); }

void VYRADisplayDisableHook(VYRAPluginID plugin) {
  if (gFocusWindow != nullptr && gFocusWindow->owner == plugin) VYRATakeKeyboardFocus(nullptr);
  if (gDragWindow == nullptr || gDragWindow->owner != plugin) return;
  int x = 0;
  int y = 0;
  gHooks->GetMouseLocation(&x, &y, 0);
  VYRADisplayMouseClickHook(x, y, VYRA_MOUSE_UP);
}

void VYRADisplayCleanupHook(VYRAPluginID plugin) {
  gDrawCallbacks.RemoveAllOf(plugin);
  gKeyCallbacks.RemoveAllOf(plugin);
  if (gFocusWindow != nullptr && gFocusWindow->owner == plugin) VYRATakeKeyboardFocus(nullptr);
  if (gDragWindow != nullptr && gDragWindow->owner == plugin) gDragWindow = nullptr;
  gWindows.RemoveAllOf(plugin);
  gHotKeys.RemoveAllOf(plugin);
}
