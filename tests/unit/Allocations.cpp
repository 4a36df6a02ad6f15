#include "Allocations.h"

#include <cstdint>
#include <cstdlib>
#include <new>

long gAllocations = 0;
std::size_t gLargestAllocation = SIZE_MAX;

namespace {

// Not inlined: GCC takes operators that it sees through for a mismatched pair.
[[gnu::noinline]] void* Allocate(std::size_t size) {
  ++gAllocations;
  void* memory = size <= gLargestAllocation ? std::malloc(size) : nullptr;
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
[[gnu::noinline]] void Release(void* memory) { std::free(memory); }

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { Release(memory); }
void operator delete(void* memory, std::size_t) noexcept { Release(memory); }
