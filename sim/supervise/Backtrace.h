// The calls on a thread's stack, found out of what was noted of the thread, without touching its process: the
// process may be stopped, or broken, and need not allow to be traced.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

#include "supervise/MemoryMap.h"

namespace sim {

struct ThreadFacts;

struct StackFrame {
  std::uintptr_t address = 0;  // of the code: where it stands, or where it will go on
  std::string module;          // the file that the code lies in; empty when it lies in none
  std::string text;            // "Burn(float) at fuel.cpp:42, in .../fuel/64/lin.vyp"
};

// The innermost first. At least the frame of the program counter itself, when the registers are known. `map`
// is the memory of the process, whose files are read for symbols and lines.
std::vector<StackFrame> ReadBacktrace(pid_t process, const ThreadFacts& facts, const MemoryMap& map);

}  // namespace sim
