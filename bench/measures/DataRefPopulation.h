// The datarefs that measures publish: the same names each time, so that the registry, which keeps every name,
// holds no more than the largest number asked for.
#pragma once

#include <VYRADataAccess.h>
#include <fmt/core.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "../HostedLibrary.h"

namespace bench {

// Three levels with at most 32 children below the first, as a well-kept tree of names has them.
inline std::string DataRefName(std::size_t index) {
  return fmt::format("bench/area_{:02}/group_{:02}/value_{:02}", index / 1024, index / 32 % 32, index % 32);
}

inline int gPublishedInt = 42;

// Publishes `size` ints, divided evenly among the library's plugins, with the names from `first` on.
inline std::vector<VYRADataRef> PublishInts(const HostedLibrary& library, std::size_t size,
                                            std::size_t first = 0) {
  const VYRAReadInt_f read = [](void* refcon) { return *static_cast<int*>(refcon); };
  std::vector<VYRADataRef> handles;
  library.Share(size, [&](std::size_t i) {
    handles.push_back(VYRARegisterDataAccessor(DataRefName(first + i).c_str(), VYRA_TYPE_INT, 0, read,
                                               nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                               nullptr, nullptr, nullptr, nullptr, &gPublishedInt, nullptr));
  });
  return handles;
}

// In an order that neither the processor nor a registry can foresee.
template <class Element>
std::vector<Element> Shuffled(std::vector<Element> elements) {
  std::shuffle(elements.begin(), elements.end(), std::mt19937(1));
  return elements;
}

}  // namespace bench
