// What a fault was, in words.
#pragma once

#include <string>

#include "host/FlightBoard.h"
#include "supervise/MemoryMap.h"

namespace sim {

// "segmentation fault at address 0x0 (a null pointer)", "stack overflow", "integer division by zero".
std::string DescribeFault(const ThreadFacts& facts, const MemoryMap& map, const FlightBoard& board);

// "SIGKILL (Killed)".
std::string DescribeSignal(int signal);

// The module that was the last to be opened where this address is; null when there was none.
const NotedModule* FindLastModule(const FlightBoard& board, std::uintptr_t address);

}  // namespace sim
