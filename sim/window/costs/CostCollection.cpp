#include "window/costs/CostCollection.h"

#include "VYRAWatch.h"
#include "host/CallWatchers.h"
#include "world/World.h"

namespace sim {
namespace {

FrameHistory gHistory;
int gShown = 0;

void TakePart(FramePart part) {
  gHistory.BeginPart(part, ReadClock());
  // By now the simulation has advanced to this frame.
  if (part == FramePart::Pass1 && gWorld.frame > 0)
    gHistory.SetNumber(gWorld.frame, static_cast<Nanoseconds>(gWorld.elapsedSeconds / gWorld.frame * 1e9));
}

void BeginCall(const VYRARunningCall* call, void* /*refcon*/) {
  gHistory.BeginCall({call->kind, call->signature, call->path}, ReadClock());
}

void EndCall(const VYRARunningCall* /*call*/, void* /*refcon*/) { gHistory.EndCall(ReadClock()); }

}  // namespace

void CollectCosts(bool isShown) {
  gShown += isShown ? 1 : -1;
  const bool isCollecting = gFramePartListener != nullptr;
  if (isCollecting == (gShown > 0)) return;
  if (isCollecting) {
    RemoveCallWatcher(&gHistory);
    gFramePartListener = nullptr;
    gHistory.Interrupt();
    return;
  }
  gFramePartListener = TakePart;
  AddCallWatcher({.structSize = sizeof(VYRAWatcher),
                  .wantsAccessors = 1,
                  .begin = BeginCall,
                  .end = EndCall,
                  .refcon = &gHistory});
}

const FrameHistory& CollectedCosts() { return gHistory; }

}  // namespace sim
