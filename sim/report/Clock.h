// The clock by which costs are measured: it never goes back, and is the same in all processes.
#pragma once

#include <cstdint>
#include <ctime>

namespace sim {

using Nanoseconds = std::uint64_t;

inline Nanoseconds ReadClock() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<Nanoseconds>(time.tv_sec) * 1'000'000'000 + static_cast<Nanoseconds>(time.tv_nsec);
}

}  // namespace sim
