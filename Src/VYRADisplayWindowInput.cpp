// What the frame and the mouse do with windows: drawing, clicks and drags, the cursor and the wheel.
#include "VYRAAtEnd.h"
#include "VYRADisplayInternal.h"
#include "VYRAHostServices.h"

namespace {

using Window = VYRAWindowCallbackRecord;
using Walk = VYRAResourceWalk<Window>;

bool IsHit(const Window& window, int x, int y) {
  return !window.is_dead() && window.visible != 0 && window.left <= x && x < window.right &&
         window.bottom <= y && y < window.top;
}

// A press goes down through the windows under the point until one takes it.
int PressMouse(int x, int y) {
  StDispatchWalk dispatch(VYRA_CALL_WINDOW_MOUSE);
  Walk walk(gWindows);
  while (Window* window = walk.Next()) {
    if (!IsHit(*window, x, y) || window->handleMouseClick == nullptr) continue;
    if (!dispatch(window->owner)) continue;
    const int taken = window->handleMouseClick(window, x, y, VYRA_MOUSE_DOWN, window->refcon);
    dispatch.Ended();
    if (taken == 0) continue;
    // One that destroyed itself in the press, or was disabled in it, has taken it, but cannot hold the mouse.
    if (walk.HoldsRecord() && !window->is_dead() && gCallable[window->owner] != 0) gDragWindow = window;
    return 0;
  }
  return 1;
}

// Drags and the release go to the window that took the press, wherever the mouse is.
int MoveHeldMouse(int x, int y, int status) {
  Window* const window = gDragWindow;
  if (window == nullptr) return 1;
  const StAtEnd release([status] {
    if (status == VYRA_MOUSE_UP) gDragWindow = nullptr;
  });
  const StDispatchCallback dispatch(window->owner, VYRA_CALL_WINDOW_MOUSE);
  if (!dispatch()) return 1;
  window->handleMouseClick(window, x, y, status, window->refcon);
  return 0;
}

// Asks the windows under a point, front to back, until one answers other than 0.
template <class Callback, class... Rest>
int AskWindowsAt(int x, int y, int kind, Callback Window::*callback, Rest... rest) {
  StDispatchWalk dispatch(kind);
  Walk walk(gWindows);
  while (Window* window = walk.Next()) {
    if (!IsHit(*window, x, y) || window->*callback == nullptr) continue;
    if (!dispatch(window->owner)) continue;
    const int answer = (window->*callback)(window, x, y, rest..., window->refcon);
    dispatch.Ended();
    if (answer != 0) return answer;
  }
  return 0;
}

}  // namespace

void VYRADisplayDrawWindows() {
  const StAtEnd restore([outer = gDrawnWindow] { gDrawnWindow = outer; });
  StDispatchWalk dispatch(VYRA_CALL_WINDOW_DRAW);
  Walk walk(gWindows, Walk::Order::reverse);
  while (Window* window = walk.Next()) {
    if (window->is_dead() || window->visible == 0 || window->draw == nullptr) continue;
    if (!dispatch(window->owner)) continue;
    gDrawnWindow = window;
    window->draw(window, window->refcon);
    dispatch.Ended();
  }
}

int VYRADisplayMouseClickHook(int x, int y, int status) {
  return status == VYRA_MOUSE_DOWN ? PressMouse(x, y) : MoveHeldMouse(x, y, status);
}

void VYRADisplayMouseDragHook() {
  if (gDragWindow == nullptr || gHooks == nullptr) return;  // the host's own windows may be before the start
  int x = 0;
  int y = 0;
  gHooks->GetMouseLocation(&x, &y, 0);
  VYRADisplayMouseClickHook(x, y, VYRA_MOUSE_DRAG);
}

int VYRADisplayCursorHook(int x, int y) {
  return AskWindowsAt(x, y, VYRA_CALL_WINDOW_CURSOR, &Window::handleCursor);
}

int VYRADisplayScrollWheelHook(int x, int y, int wheel, int clicks) {
  return AskWindowsAt(x, y, VYRA_CALL_WINDOW_WHEEL, &Window::handleMouseWheel, wheel, clicks) != 0 ? 0 : 1;
}
