// The bare machine: calls through pointers that the compiler may not look behind, which is the least that a
// library of callbacks can cost.
#pragma once

#include <cstddef>
#include <type_traits>
#include <vector>

#include "Session.h"

namespace bench {

// Calls `size` callbacks with the same arguments, one pass per iteration.
template <class Callback, class... Arguments>
Loop BarePass(std::size_t size, Callback callback, Arguments... arguments) {
  return [=, callbacks = std::vector<Callback>(size, callback)](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
      for (const Callback next : callbacks) {
        if constexpr (std::is_void_v<decltype(next(arguments...))>) {
          next(arguments...);
        } else {
          benchmark::DoNotOptimize(next(arguments...));
        }
      }
      benchmark::ClobberMemory();
    }
  };
}

// Calls one callback per iteration.
template <class Callback, class... Arguments>
Loop BareCall(Callback callback, Arguments... arguments) {
  return [=](benchmark::State& state) {
    Callback volatile pointer = callback;
    for ([[maybe_unused]] auto iteration : state) {
      if constexpr (std::is_void_v<decltype(callback(arguments...))>) {
        pointer(arguments...);
      } else {
        benchmark::DoNotOptimize(pointer(arguments...));
      }
    }
  };
}

}  // namespace bench
