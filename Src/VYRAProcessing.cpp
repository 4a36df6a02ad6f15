#include "VYRAProcessing.h"

#include <limits>
#include <optional>

#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderReports.h"
#include "VYRAProcessingInternal.h"

VYRAResourceList<VYRAFlightLoopRecord> gFlightLoops;

namespace {

// The cycle counter: passes so far, of both phases.
int gLastCallNumber = 0;

// Kept: never advanced, so that "elapsed since the last flight loop" is the simulation time itself. Plugins
// use it as their clock.
constexpr float gLastCallTime = 0.0F;

bool IsCallersOwn(VYRAFlightLoopRecord* handle) {
  const VYRAFlightLoopRecord* loop = gFlightLoops.Get(handle);
  return loop != nullptr && loop->owner == gDispatchedPlugin;
}

// When a schedule counts from. The host is asked before the flight loop is looked up: what it does in the
// service may lead to the flight loop's end.
std::optional<float> BeginOfSchedule(int relativeToNow) {
  if (relativeToNow == 0) return std::nullopt;
  return VYRAGetElapsedTime();
}

void Schedule(VYRAFlightLoopRecord& loop, float interval, std::optional<float> begin) {
  if (begin.has_value()) loop.lastCallTime = *begin;
  loop.Wait(interval);
}

void ReportBadParams(const VYRAFlightLoopParams& params) {
  if (!VYRAHasError()) return;
  if (params.structSize != static_cast<int>(sizeof(params))) {
    VYRASendError("Illegal struct size for VYRACreateFlightLoop");
  }
  if (params.phase != VYRA_FLIGHT_LOOP_PHASE_0 && params.phase != VYRA_FLIGHT_LOOP_PHASE_1) {
    VYRASendError("Illegal phase type for VYRACreateFlightLoop");
  }
  if (params.callback == nullptr) VYRASendError("Null callback for VYRACreateFlightLoop");
}

}  // namespace

VYRAFlightLoopRecord::VYRAFlightLoopRecord(const VYRAFlightLoopParams& params, float now, int cycle,
                                           VYRAPluginID plugin)
    : phase(params.phase),
      callback(params.callback),
      refcon(params.refcon),
      owner(plugin),
      lastCallTime(now),
      lastCallCycle(cycle) {
  Wait(0);
}

void VYRAFlightLoopRecord::Wait(float interval) {
  constexpr float kNever = std::numeric_limits<float>::quiet_NaN();  // no number is at least as large
  // Both sums are in single precision, as the passes' own times are.
  dueTime = interval > 0 ? lastCallTime + interval : kNever;
  dueCycle = interval < 0 ? static_cast<float>(lastCallCycle) - interval : kNever;
}

void VYRAFlightLoopRecord::WaitAsBefore(float now, int cycle) {
  dueTime += now - lastCallTime;
  dueCycle += static_cast<float>(cycle) - static_cast<float>(lastCallCycle);
  lastCallTime = now;
  lastCallCycle = cycle;
}

float VYRAGetElapsedTime(void) { return gHooks != nullptr ? gHooks->GetElapsedTime() : 0.0F; }

int VYRAGetCycleNumber(void) { return gLastCallNumber; }

VYRAFlightLoopID VYRACreateFlightLoop(const VYRAFlightLoopParams* params) {
  if (params == nullptr) return nullptr;
  ReportBadParams(*params);
  auto* loop = new VYRAFlightLoopRecord(*params, VYRAGetElapsedTime(), gLastCallNumber, gDispatchedPlugin);
  gFlightLoops.Add(loop);
  return loop;
}

void VYRADestroyFlightLoop(VYRAFlightLoopID flightLoop) {
  if (IsCallersOwn(flightLoop)) {
    gFlightLoops.Remove(flightLoop);
  } else {
    VYRASendError("Attempt to remove a flight loop callback owned by another plugin.");
  }
}

void VYRAScheduleFlightLoop(VYRAFlightLoopID flightLoop, float interval, int relativeToNow) {
  const std::optional<float> begin = BeginOfSchedule(relativeToNow);
  if (IsCallersOwn(flightLoop)) {
    Schedule(*flightLoop, interval, begin);
  } else {
    VYRASendError("Attempt to schedule a flight loop callback owned by another plugin.");
  }
}

void VYRARegisterFlightLoopCallback(VYRAFlightLoop_f callback, float interval, void* refcon) {
  const VYRAFlightLoopParams params = {sizeof(VYRAFlightLoopParams), VYRA_FLIGHT_LOOP_PHASE_0, callback,
                                       refcon};
  VYRAScheduleFlightLoop(VYRACreateFlightLoop(&params), interval, 0);
}

void VYRAUnregisterFlightLoopCallback(VYRAFlightLoop_f callback, void* refcon) {
  gFlightLoops.BeginIterate();
  if (auto* loop = gFlightLoops.FirstLike(std::tuple(callback, refcon))) gFlightLoops.Remove(loop);
  gFlightLoops.EndIterate();
}

void VYRASetFlightLoopCallbackInterval(VYRAFlightLoop_f callback, float interval, int relativeToNow,
                                       void* refcon) {
  const std::optional<float> begin = BeginOfSchedule(relativeToNow);
  gFlightLoops.BeginIterate();
  auto* loop = gFlightLoops.FirstLike(std::tuple(callback, refcon));
  for (; loop != nullptr; loop = gFlightLoops.NextLike(loop)) Schedule(*loop, interval, begin);
  gFlightLoops.EndIterate();
}

void VYRAProcessingRunPass(float now, int phase) {
  // Wraps around after years of passes rather than overflow.
  gLastCallNumber = static_cast<int>(static_cast<unsigned>(gLastCallNumber) + 1U);
  StDispatchWalk dispatch(VYRA_CALL_FLIGHT_LOOP);
  VYRAResourceWalk walk(gFlightLoops);
  int number = gLastCallNumber;
  const auto isDue = [&](const VYRAFlightLoopRecord& loop) {
    const bool due = now >= loop.dueTime || static_cast<float>(number) >= loop.dueCycle;
    return due && loop.phase == phase && !loop.is_dead() && loop.callback != nullptr;
  };
  for (VYRAFlightLoopRecord& loop : walk.Where(isDue)) {
    if (!dispatch(loop.owner)) continue;
    float interval = 0;
    try {
      interval = loop.callback(now - loop.lastCallTime, now - gLastCallTime, number, loop.refcon);
    } catch (...) {
      if (walk.HoldsRecord()) loop.WaitAsBefore(now, gLastCallNumber);
      throw;
    }
    dispatch.Ended();
    number = gLastCallNumber;  // higher, when the callback led to passes
    if (!walk.HoldsRecord()) continue;
    loop.lastCallTime = now;
    loop.lastCallCycle = number;
    loop.Wait(interval);
  }
}

void VYRAProcessingCleanupHook(VYRAPluginID plugin) { gFlightLoops.RemoveAllOf(plugin); }
