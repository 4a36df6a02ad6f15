// A flight without a supervisor, for debuggers: faults are left to them.
#pragma once

#include <functional>

#include "supervise/Blame.h"

namespace sim {

// Flies in this process, once. Should a plugin exit it, then `conclude` is told and the exit code is 3; that
// of _exit cannot be seen.
void FlyHere(const std::function<void()>& fly, void (*conclude)(const BadEnd& end));

}  // namespace sim
