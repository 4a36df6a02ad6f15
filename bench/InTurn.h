// Asking for one thing after the other, round and round: what look-ups are measured with.
#pragma once

#include <cstddef>
#include <vector>

#include "Session.h"

namespace bench {

template <class Element, class Ask>
void AskInTurn(benchmark::State& state, const std::vector<Element>& elements, Ask ask) {
  std::size_t next = 0;
  for ([[maybe_unused]] auto iteration : state) {
    benchmark::DoNotOptimize(ask(elements[next]));
    if (++next == elements.size()) next = 0;
  }
}

}  // namespace bench
