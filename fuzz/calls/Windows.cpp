#include "Windows.h"

#include "VYRAWatch.h"

namespace calls {

WindowStates Windows() {
  std::vector<VYRAWindowInfo> infos(static_cast<std::size_t>(VYRAGetWindows(nullptr, 0)));
  VYRAGetWindows(infos.data(), static_cast<int>(infos.size()));
  WindowStates windows;
  windows.reserve(infos.size());
  for (const VYRAWindowInfo& info : infos) {
    windows.push_back({info.window,
                       {info.left, info.top, info.right, info.bottom},
                       VYRAGetWindowIsVisible(info.window) != 0,
                       info.isShown != 0,
                       info.hasKeyboardFocus != 0,
                       info.holdsMouse != 0});
  }
  return windows;
}

WindowState* Find(WindowStates& windows, VYRAWindowID window) {
  for (WindowState& one : windows) {
    if (one.window == window) return &one;
  }
  return nullptr;
}

std::vector<const void*> HitAt(const WindowStates& windows, int x, int y) {
  std::vector<const void*> hit;
  for (const WindowState& one : windows) {
    if (one.isShown && one.Contains(x, y)) hit.push_back(&one.Record());
  }
  return hit;
}

}  // namespace calls
