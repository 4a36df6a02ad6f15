// What the display takes from a plugin that is disabled, and removes of one that leaves.
#include "VYRAAtEnd.h"
#include "VYRADisplayInternal.h"
#include "VYRAHostServices.h"
#include "VYRALoaderSteps.h"

namespace {

bool HasFocus(VYRAPluginID plugin) { return gFocusWindow != nullptr && gFocusWindow->owner == plugin; }
bool HasMouse(VYRAPluginID plugin) { return gDragWindow != nullptr && gDragWindow->owner == plugin; }

// Tells the window that holds the mouse of its release, at the place where the mouse is.
void ReleaseMouse(VYRAPluginID plugin) {
  // Also when the host's answer leads to an exception, or the release to another press.
  const StAtEnd release([plugin] {
    if (HasMouse(plugin)) gDragWindow = nullptr;
  });
  int x = 0;
  int y = 0;
  gHooks->GetMouseLocation(&x, &y, 0);
  // Asked again: the host may have reported a release and a press meanwhile.
  if (HasMouse(plugin)) VYRADisplayMouseClickHook(x, y, VYRA_MOUSE_UP);
}

}  // namespace

void VYRADisplayDisableHook(VYRAPluginID plugin) {
  VYRALoaderSteps steps;
  steps.Take([=] {
    if (HasFocus(plugin)) VYRATakeKeyboardFocus(nullptr);
  });
  steps.Take([=] {
    if (HasMouse(plugin)) ReleaseMouse(plugin);
  });
  steps.End();
}

void VYRADisplayCleanupHook(VYRAPluginID plugin) {
  gDrawCallbacks.RemoveAllOf(plugin);
  gKeyCallbacks.RemoveAllOf(plugin);
  if (HasFocus(plugin)) VYRATakeKeyboardFocus(nullptr);
  if (HasMouse(plugin)) gDragWindow = nullptr;
  gWindows.RemoveAllOf(plugin);
  gHotKeys.RemoveAllOf(plugin);
}
