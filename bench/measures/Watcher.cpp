// What it costs to be told of calls: flight loops that are due, with a watcher that reads the clock as each
// begins and ends, beside loops that read it themselves and that nobody watches.
#include <VYRAProcessing.h>
#include <VYRAWatch.h>
#include <dlfcn.h>

#include <ctime>

#include "../HostedLibrary.h"
#include "Measures.h"

namespace bench {

namespace {

constexpr const char* kOwnClock = "unwatched, reading the clock twice";

int gCalls = 0;
timespec gClock = {};

void ReadClock() { clock_gettime(CLOCK_MONOTONIC, &gClock); }

float CountCall(float /*sinceLastCall*/, float /*now*/, int /*counter*/, void* /*refcon*/) {
  ++gCalls;
  return -1.0F;
}

float CountCallAndReadClock(float /*sinceLastCall*/, float /*now*/, int /*counter*/, void* /*refcon*/) {
  ReadClock();
  ++gCalls;
  ReadClock();
  return -1.0F;
}

void NoteTime(const VYRARunningCall* /*call*/, void* /*refcon*/) { ReadClock(); }

// Asked for by name, so that vyra-bench also measures a library that has no watcher yet.
int SetWatcher(const VYRAWatcher* watcher) {
  static const auto set = reinterpret_cast<decltype(&VYRASetWatcher)>(dlsym(RTLD_DEFAULT, "VYRASetWatcher"));
  return set != nullptr ? set(watcher) : 0;
}

// Passes over `size` flight loops of one kind, at which the others are never due.
Loop Pass(std::size_t size, int phase, const VYRAWatcher* watcher) {
  return [=](benchmark::State& state) {
    SetWatcher(watcher);
    gCalls = 0;
    const int event =
        phase == VYRA_FLIGHT_LOOP_PHASE_0 ? VYRA_EVENT_FLIGHT_LOOPS_0 : VYRA_EVENT_FLIGHT_LOOPS_1;
    for ([[maybe_unused]] auto iteration : state) VYRAEventHook(event, nullptr, nullptr, 1.0F, 0.0F);
    SetWatcher(nullptr);
    if (gCalls != static_cast<int>(state.iterations() * static_cast<std::int64_t>(size))) {
      state.SkipWithError("wrong calls");
    }
  };
}

}  // namespace

void MeasureWatchedFlightLoops(Session& session, std::size_t size) {
  static const VYRAWatcher watcher = {sizeof watcher, 0, NoteTime, NoteTime, nullptr};
  if (SetWatcher(nullptr) == 0) return;
  const HostedLibrary library;
  for (const int phase : {VYRA_FLIGHT_LOOP_PHASE_0, VYRA_FLIGHT_LOOP_PHASE_1}) {
    const VYRAFlightLoop_f callback = phase == VYRA_FLIGHT_LOOP_PHASE_0 ? CountCall : CountCallAndReadClock;
    library.Share(size, [=](std::size_t) {
      const VYRAFlightLoopParams params{sizeof params, phase, callback, nullptr};
      VYRAScheduleFlightLoop(VYRACreateFlightLoop(&params), -1.0F, 1);
    });
  }
  session.Compare("watched flight loop", size, size,
                  {{kLibrary, Pass(size, VYRA_FLIGHT_LOOP_PHASE_0, &watcher)},
                   {kOwnClock, Pass(size, VYRA_FLIGHT_LOOP_PHASE_1, nullptr)}});
  session.Subtract("telling a watcher of a call", "watched flight loop", size, kLibrary, kOwnClock);
}

}  // namespace bench
