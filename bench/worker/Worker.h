// What vyra-bench says to its worker plugins, in messages whose parameter points at one of these.
#pragma once

#include <VYRAUtilities.h>

namespace bench {

enum { kMessageRunJob = 5000, kMessagePublish = 5001, kMessageJoinFrame = 5002 };

// kMessageRunJob: runs vyra-bench's own code on the plugin's behalf.
struct WorkerJob {
  void (*run)(void* context);
  void* context;
};

// What the workers did in the frames so far.
struct WorkerTally {
  long flightLoops = 0;
  long drawCallbacks = 0;
  long windows = 0;
  long commands = 0;
};

// A worker's load in a frame: 5 flight loops with 10 reads and 2 writes each, 2 draw callbacks, a window and
// a command handler. kMessagePublish makes it publish its datarefs, then kMessageJoinFrame the rest.
inline constexpr int kWorkerFlightLoops = 5;
inline constexpr int kWorkerReads = 50;
inline constexpr int kWorkerWrites = 10;
inline constexpr int kWorkerDrawCallbacks = 2;

struct WorkerFrame {
  int index;     // among the workers
  int neighbor;  // whose datarefs it reads and writes
  VYRACommandRef command;
  WorkerTally* tally;
};

}  // namespace bench
