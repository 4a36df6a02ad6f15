// What the driver leaves out for now, because it would meet the same fault in every run.
#pragma once

namespace calls {

constexpr bool kModulesAreMetTwice = false;
constexpr bool kConstructorsAct = false;
constexpr bool kDrawingMakesWindows = true;
constexpr bool kLosersThrow = true;  // of the focus, the mouse and the camera
constexpr bool kLivesThrow = false;  // start, enable, disable, stop
constexpr bool kHostActsWhileItHandles = false;
constexpr bool kStartsAndEndsAreNested = false;
constexpr bool kPassesCountWithoutPlugins = false;

}  // namespace calls
