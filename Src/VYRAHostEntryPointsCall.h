// The frame of every entry point.
#pragma once

#include <type_traits>

#include "VYRALoaderClosing.h"
#include "VYRALoaderHostCalls.h"

inline void VYRACloseWhatWaits() {
  if (!gWaitingModules.empty() && !VYRALoaderIsNested()) [[unlikely]]
    VYRALoaderCloseWaitingModules();
}

// Runs what an entry point does as a call of the host. Before and after one that is not nested in a plugin's
// code, the modules that had to wait are closed; after one that an exception leaves, the next call does it.
template <class Body>
auto VYRARunHostCall(Body body) {
  const StHostCall call;
  VYRACloseWhatWaits();
  if constexpr (std::is_void_v<decltype(body())>) {
    body();
    VYRACloseWhatWaits();
  } else {
    const auto result = body();
    VYRACloseWhatWaits();
    return result;
  }
}
