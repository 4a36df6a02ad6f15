#include "../Peers.h"

#ifdef BENCH_WITH_BOOST_SIGNALS
#include <boost/signals2.hpp>
#include <memory>
#endif

namespace bench {

#ifdef BENCH_WITH_BOOST_SIGNALS

Loop BoostSignalsPass(std::size_t size, VYRAFlightLoop_f callback, UsedHeap& heap) {
  const auto signal = std::make_shared<boost::signals2::signal<float(float, float, int, void*)>>();
  for (std::size_t i = 0; i < size; ++i) {
    heap.Allocate();
    signal->connect(callback);
  }
  return [signal](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) (*signal)(0.02F, 1.0F, 1, nullptr);
  };
}

#else

Loop BoostSignalsPass(std::size_t /*size*/, VYRAFlightLoop_f /*callback*/, UsedHeap& /*heap*/) { return {}; }

#endif

}  // namespace bench
