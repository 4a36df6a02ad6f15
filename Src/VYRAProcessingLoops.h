// Flight loops: the list of callbacks that are called in the host's passes when they are due.
#pragma once

#include "VYRAProcessing.h"
#include "VYRAResourceList.h"

struct VYRAFlightLoopRecord : VYRAResource_t<VYRAFlightLoopRecord> {
  VYRAFlightLoopRecord(const VYRAFlightLoopParams& params, float now, int cycle, int plugin);
  ~VYRAFlightLoopRecord();
  VYRAFlightLoopRecord(const VYRAFlightLoopRecord&) = delete;
  VYRAFlightLoopRecord& operator=(const VYRAFlightLoopRecord&) = delete;

  float lastCallTime;  // seconds; of the last call, the creation or a schedule relative to now
  int lastCallCycle;   // of the last call or the creation
  float interval = 0;  // above 0: seconds; below 0: passes; 0: not scheduled
  int phase;
  VYRAFlightLoop_f callback;
  int owner;
  void* refcon;
};

extern VYRAResourceList<VYRAFlightLoopRecord> gFlightLoops;

// One pass: calls every flight loop of the phase that is due at the simulation time `now`, in seconds.
void VYRAProcessingRunPass(float now, int phase);

// A plugin leaves: its flight loops are removed.
void VYRAProcessingCleanupHook(int plugin);
