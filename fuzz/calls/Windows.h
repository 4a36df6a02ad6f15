// How the library's windows stand at a moment, so that what a call makes of them can be held against the
// rules.
#pragma once

#include <array>
#include <vector>

#include "Book.h"

namespace calls {

struct Geometry {
  explicit Geometry(VYRAWindowID window) { VYRAGetWindowGeometry(window, &left, &top, &right, &bottom); }

  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

struct WindowState {
  VYRAWindowID window;
  std::array<int, 4> edges;  // left, top, right, bottom
  bool isVisible;
  bool isShown;  // visible, and of a plugin that may be called
  bool hasFocus;
  bool hasMouse;

  bool operator==(const WindowState&) const = default;
  bool Contains(int x, int y) const { return edges[0] <= x && x < edges[2] && edges[3] <= y && y < edges[1]; }
  Registration& Record() const { return *gBook.Last(Family::window, window); }
};

using WindowStates = std::vector<WindowState>;

// Whether windows of this run may be hidden by others, which nobody lists then.
inline bool gMayHide = false;

// All windows, the front-most first.
WindowStates Windows();

WindowState* Find(WindowStates& windows, VYRAWindowID window);

// Those that a callback of whom is to be called for a point, the front-most first.
std::vector<const void*> HitAt(const WindowStates& windows, int x, int y);

// A call that nobody disturbed made this of the windows.
inline void RequireWindows(const Call& call, const WindowStates& meant) {
  if (!call.IsDisturbed()) Require(meant == Windows(), "the windows are not as a call was to leave them");
}

}  // namespace calls
