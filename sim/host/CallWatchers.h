// Who is told of calls into plugins. The library has one watcher (VYRAWatch.h); here it serves as many as
// there are. With none, the library watches nothing.
#pragma once

#include "VYRAWatch.h"

namespace sim {

// Adds a watcher, or takes away the one with this refcon. Not to be called from a watcher's own functions. A
// watcher that is added inside a call into a plugin may be told of that call's end without its begin.
void AddCallWatcher(const VYRAWatcher& watcher);
void RemoveCallWatcher(const void* refcon);

}  // namespace sim
