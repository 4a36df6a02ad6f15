// Windows: their records, their order and keyboard focus. What the mouse and the frame do with them stands in
// VYRADisplayWindowInput.cpp.
#include "VYRAAtEnd.h"
#include "VYRADisplayInternal.h"
#include "VYRAHostServices.h"
#include "VYRAWatch.h"

VYRAResourceList<VYRAWindowCallbackRecord> gWindows;
VYRAWindowCallbackRecord* gFocusWindow = nullptr;
VYRAWindowCallbackRecord* gDragWindow = nullptr;
VYRAWindowID gDrawnWindow = nullptr;

namespace {

using Window = VYRAWindowCallbackRecord;

// The window, if the handle is one. Windows whose removal is still pending are freed first, as the walk of
// the list that this stands for would end with it; and it brings the list's anchor back to the front.
Window* VYRAWindowIsValid(VYRAWindowID window) {
  gWindows.BeginIterate();
  gWindows.EndIterate();
  return gWindows.Get(window);
}

// A window that is being told that it loses focus. It is told once, also when it moves the focus to and fro
// itself, in its own call or through the call of another window that loses focus meanwhile.
class StLosingFocus {
 public:
  explicit StLosingFocus(Window* window) : loser(gWindows.Hold(window)), outer(innermost) {
    innermost = this;
  }
  ~StLosingFocus() { innermost = outer; }
  StLosingFocus(const StLosingFocus&) = delete;
  StLosingFocus& operator=(const StLosingFocus&) = delete;

  static bool IsUnderWayFor(const Window* window) {
    for (const StLosingFocus* losing = innermost; losing != nullptr; losing = losing->outer) {
      if (losing->loser.Get() == window) return true;
    }
    return false;
  }

 private:
  VYRAResourceHold<Window> loser;
  const StLosingFocus* outer;
  static inline const StLosingFocus* innermost = nullptr;
};

void TellLosingFocus(VYRAWindowID taker) {
  Window* const loser = gFocusWindow;
  if (loser == nullptr || loser->handleKey == nullptr || StLosingFocus::IsUnderWayFor(loser)) return;
  const StLosingFocus losing(loser);
  const StDispatchCallback dispatch(loser->owner, VYRA_CALL_WINDOW_KEY);
  // Kept: the first argument is the window that takes focus, as plugins rely on it.
  if (dispatch()) loser->handleKey(taker, 0, 0, 0, loser->refcon, 1);
}

VYRAWindowID AddWindow(const VYRAWindowCreateParams& params) {
  auto* window = new Window;
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

// Nobody is told.
void RemoveWindow(Window* window) {
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
  const VYRAResourceHold<Window> held = gWindows.Hold(VYRAWindowIsValid(window));
  const StAtEnd remove([&] {
    if (Window* record = held.Get()) RemoveWindow(record);
  });
  if (held.Get() != nullptr && held.Get() == gFocusWindow) VYRATakeKeyboardFocus(nullptr);
}

void VYRAGetWindowGeometry(VYRAWindowID window, int* outLeft, int* outTop, int* outRight, int* outBottom) {
  const Window* record = VYRAWindowIsValid(window);
  if (record == nullptr) return;
  if (outLeft != nullptr) *outLeft = record->left;
  if (outTop != nullptr) *outTop = record->top;
  if (outRight != nullptr) *outRight = record->right;
  if (outBottom != nullptr) *outBottom = record->bottom;
}

void VYRASetWindowGeometry(VYRAWindowID window, int left, int top, int right, int bottom) {
  Window* record = VYRAWindowIsValid(window);
  if (record == nullptr) return;
  record->left = left;
  record->top = top;
  record->right = right;
  record->bottom = bottom;
}

int VYRAGetWindowIsVisible(VYRAWindowID window) {
  const Window* record = VYRAWindowIsValid(window);
  return record != nullptr ? record->visible : 0;
}

void VYRASetWindowIsVisible(VYRAWindowID window, int visible) {
  Window* const record = VYRAWindowIsValid(window);
  if (record == nullptr) return;
  const VYRAResourceHold<Window> held = gWindows.Hold(record);
  const StAtEnd store([&] {
    if (Window* still = held.Get()) still->visible = visible;
  });
  if (record->visible != 0 && visible == 0 && record == gFocusWindow) VYRATakeKeyboardFocus(nullptr);
}

void* VYRAGetWindowRefCon(VYRAWindowID window) {
  const Window* record = VYRAWindowIsValid(window);
  return record != nullptr ? record->refcon : nullptr;
}

void VYRASetWindowRefCon(VYRAWindowID window, void* refcon) {
  Window* record = VYRAWindowIsValid(window);
  if (record != nullptr) record->refcon = refcon;
}

void VYRATakeKeyboardFocus(VYRAWindowID window) {
  Window* const taker = VYRAWindowIsValid(window);
  if (taker == gFocusWindow) return;
  if (taker != nullptr && !VYRARegistryIsEnabled(taker->owner)) return;
  const VYRAResourceHold<Window> held = gWindows.Hold(taker);
  const StAtEnd move([&] {
    // The loser may have destroyed the taker, or disabled its plugin.
    Window* const still = held.Get();
    gFocusWindow = still != nullptr && VYRARegistryIsEnabled(still->owner) ? still : nullptr;
  });
  TellLosingFocus(window);
}

void VYRABringWindowToFront(VYRAWindowID window) {
  if (Window* record = VYRAWindowIsValid(window)) gWindows.MoveToFront(record);
}

int VYRAIsWindowInFront(VYRAWindowID window) {
  if (VYRAWindowIsValid(window) == nullptr) return 0;
  VYRAResourceWalk walk(gWindows);
  while (const Window* record = walk.Next()) {
    if (record->visible != 0) return record == window ? 1 : 0;
  }
  return 0;
}

int VYRAGetWindows(VYRAWindowInfo* outWindows, int capacity) {
  VYRAResourceWalk walk(gWindows);
  int count = 0;
  while (Window* const record = walk.Next()) {
    if (record->is_dead()) continue;
    if (count++ >= capacity) continue;
    outWindows[count - 1] = {.window = record,
                             .plugin = record->owner,
                             .left = record->left,
                             .top = record->top,
                             .right = record->right,
                             .bottom = record->bottom,
                             .isShown = record->visible != 0 && VYRARegistryIsEnabled(record->owner),
                             .hasKeyboardFocus = record == gFocusWindow,
                             .holdsMouse = record == gDragWindow};
  }
  return count;
}

VYRAWindowID VYRAGetDrawnWindow(void) { return gDrawnWindow; }

void VYRAGetScreenSize(int* outWidth, int* outHeight) { gHooks->GetScreenSize(outWidth, outHeight); }

void VYRAGetMouseLocation(int* outX, int* outY) { gHooks->GetMouseLocation(outX, outY, 1); }
