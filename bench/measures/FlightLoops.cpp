// Passes over flight loops, all of which are due, or none.
#include <VYRAProcessing.h>

#include "../Bare.h"
#include "../HostedLibrary.h"
#include "../Peers.h"
#include "../UsedHeap.h"
#include "Measures.h"

namespace bench {

namespace {

int gCalls = 0;

// Asks to be called in the next pass again.
float CountCall(float /*sinceLastCall*/, float /*now*/, int /*counter*/, void* /*refcon*/) {
  ++gCalls;
  return -1.0F;
}

void Create(const HostedLibrary& library, std::size_t size, float interval, UsedHeap& heap) {
  library.Share(size, [&, interval](std::size_t) {
    heap.Allocate();
    const VYRAFlightLoopParams params{sizeof params, VYRA_FLIGHT_LOOP_PHASE_0, CountCall, nullptr};
    VYRAScheduleFlightLoop(VYRACreateFlightLoop(&params), interval, 1);
  });
}

// `expected`: how many are called in each pass; a pass that calls others measures something else.
Loop LibraryPass(int expected) {
  return [expected](benchmark::State& state) {
    gCalls = 0;
    for ([[maybe_unused]] auto iteration : state) {
      VYRAEventHook(VYRA_EVENT_FLIGHT_LOOPS_0, nullptr, nullptr, 1.0F, 0.0F);
    }
    if (gCalls != static_cast<int>(state.iterations()) * expected) state.SkipWithError("wrong calls");
  };
}

Loop BareFlightLoops(std::size_t size) {
  return BarePass<VYRAFlightLoop_f>(size, CountCall, 0.02F, 1.0F, 1, nullptr);
}

}  // namespace

void MeasureDueFlightLoops(Session& session, std::size_t size) {
  const HostedLibrary library;
  UsedHeap heap;
  Create(library, size, -1.0F, heap);
  session.Compare("due flight loop", size, size,
                  {{kLibrary, LibraryPass(static_cast<int>(size))},
                   {kBareCall, BareFlightLoops(size)},
                   {kSigc, SigcPass(size, CountCall, heap)},
                   {kBoostSignals, BoostSignalsPass(size, CountCall, heap)}});
}

void MeasureIdleFlightLoops(Session& session, std::size_t size) {
  const HostedLibrary library;
  UsedHeap heap;
  Create(library, size, 1e9F, heap);
  session.Compare("flight loop that is not due", size, size,
                  {{kLibrary, LibraryPass(0)}, {kBareCall, BareFlightLoops(size)}});
}

}  // namespace bench
