#include "../Peers.h"

#ifdef BENCH_WITH_SIGC
#include <sigc++/sigc++.h>

#include <memory>
#endif

namespace bench {

#ifdef BENCH_WITH_SIGC

Loop SigcPass(std::size_t size, VYRAFlightLoop_f callback, UsedHeap& heap) {
  const auto signal = std::make_shared<sigc::signal<float, float, float, int, void*>>();
  for (std::size_t i = 0; i < size; ++i) {
    heap.Allocate();
    signal->connect(sigc::ptr_fun(callback));
  }
  return [signal](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) signal->emit(0.02F, 1.0F, 1, nullptr);
  };
}

#else

Loop SigcPass(std::size_t /*size*/, VYRAFlightLoop_f /*callback*/, UsedHeap& /*heap*/) { return {}; }

#endif

}  // namespace bench
