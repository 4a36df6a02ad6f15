// Flight loops: the list of callbacks that are called in the host's passes when they are due.
#pragma once

#include <tuple>

#include "VYRAProcessing.h"
#include "VYRAResourceList.h"
#include "VYRAResourceWalk.h"

struct VYRAFlightLoopRecord : VYRAResource_t<VYRAFlightLoopRecord> {
  VYRAFlightLoopRecord(const VYRAFlightLoopParams& params, float now, int cycle, VYRAPluginID plugin);

  // What it is known by to those who have no handle.
  auto Key() const { return std::tuple(callback, refcon); }

  // Waits from the last call on: seconds above 0, passes below 0, for good at 0.
  void Wait(float interval);

  // Waits as long as the last time, after a call that did not come to an answer.
  void WaitAsBefore(float now, int cycle);

  // When it is due, at whichever comes first; the one that it does not wait for never comes. Most loops of
  // a pass are only asked this, so it is worked out when they are called, not when they are asked.
  float dueTime;   // seconds
  float dueCycle;  // passes
  int phase;
  VYRAFlightLoop_f callback;
  void* refcon;
  VYRAPluginID owner;
  float lastCallTime;  // seconds; of the last call, the creation or a schedule relative to now
  int lastCallCycle;   // of the last call or the creation
};

extern VYRAResourceList<VYRAFlightLoopRecord> gFlightLoops;

// One pass: calls every flight loop of the phase that is due at the simulation time `now`, in seconds.
void VYRAProcessingRunPass(float now, int phase);

// A plugin leaves: its flight loops are removed.
void VYRAProcessingCleanupHook(VYRAPluginID plugin);
