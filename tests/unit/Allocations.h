// The heap of a test program that links Allocations.cpp: it counts what is taken from it, and can run out.
#pragma once

#include <cstddef>

// How often memory was taken so far.
extern long gAllocations;

// Memory is refused to whoever asks for more bytes than these at once; none at first.
extern std::size_t gLargestAllocation;
