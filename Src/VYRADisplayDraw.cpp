// Draw callbacks, and the steps of the host's frame that call them.
#include <bitset>

#include "VYRADisplayInternal.h"
#include "VYRADisplayRegistration.h"
#include "VYRALoaderFeatures.h"

VYRAResourceList<VYRADrawCallbackRecord> gDrawCallbacks;

namespace {

VYRADrawCallbackRecord* NewRecord(VYRADrawCallback_f callback, int phase, int wantsBefore, void* refcon) {
  auto* record = new VYRADrawCallbackRecord;
  record->callback = callback;
  record->owner = gDispatchedPlugin;
  record->phase = phase;
  record->wantsBefore = wantsBefore;
  record->refcon = refcon;
  return record;
}

bool WantsPass(const VYRADrawCallbackRecord& record, int isReflection) {
  return isReflection != 1 || VYRAHasFeatureInternal(record.owner, kFeatureWantsReflections) != 0;
}

// Which phases may have callbacks. A frame asks for every phase, and most have none: those are not searched
// for among the callbacks of all the others. A phase whose search finds nobody is noted as free again.
constexpr int kLastPhase = 102;
std::bitset<std::size_t{2} * (kLastPhase + 1)> gPhasesInUse;

std::size_t PlaceOf(int phase, int isBefore) {
  return 2 * static_cast<std::size_t>(phase) + static_cast<std::size_t>(isBefore);
}

void NotePhase(int phase, int isBefore) {
  // Callbacks for anything else are never called.
  if (phase < 0 || phase > kLastPhase || isBefore < 0 || isBefore > 1) return;
  gPhasesInUse.set(PlaceOf(phase, isBefore));
}

int VYRADispatchDrawingHook(int phase, int isBefore, int isReflection) {
  if (!gPhasesInUse.test(PlaceOf(phase, isBefore))) return 1;
  bool inUse = false;
  int result = 1;
  StDispatchWalk dispatch(VYRA_CALL_DRAW_CALLBACK);
  VYRAResourceWalk<VYRADrawCallbackRecord> walk(gDrawCallbacks);
  const auto isMeant = [&](const VYRADrawCallbackRecord& record) {
    if (record.phase != phase || record.wantsBefore != isBefore) return false;
    inUse = true;
    return !record.is_dead() && record.callback != nullptr && WantsPass(record, isReflection);
  };
  for (const VYRADrawCallbackRecord& record : walk.Where(isMeant)) {
    if (!dispatch(record.owner)) continue;
    // Kept: bit by bit, so that a 2 beside a 1 stops the host's drawing as a 0 does.
    result &= record.callback(phase, isBefore, record.refcon);
    dispatch.Ended();
  }
  if (!inUse) gPhasesInUse.reset(PlaceOf(phase, isBefore));
  return result;
}

// What a step of the frame does: a dispatch before the host's drawing, one after it, or both; and whose
// result the host gets.
struct Step {
  int phase;
  bool before;
  bool after;
  bool returnsBefore;
};

constexpr Step Before(int phase) { return {phase, true, false, true}; }
constexpr Step After(int phase) { return {phase, false, true, false}; }
constexpr Step Both(int phase, bool returnsBefore) { return {phase, true, true, returnsBefore}; }

// Kept: the uneven pairs. Steps 12 and 18 do not return what their first dispatch said while 1 and 13 do,
// phase 55 comes before 50, and the map's phases come as 101, 100, 102. Hosts are built around it.
constexpr int kWindowStep = 20;
constexpr Step kSteps[] = {
    {0, false, false, false},  // there is no step 0
    Both(0, true),
    Before(5),
    After(5),
    Before(10),
    After(10),
    Before(15),
    After(15),
    Before(20),
    After(20),
    Before(25),
    After(25),
    Both(30, false),
    Both(35, true),
    Before(40),
    After(40),
    Before(45),
    After(45),
    Both(55, false),
    Before(50),
    After(50),  // the windows, and then phase 50
    Before(101),
    After(101),
    Before(100),
    After(100),
    Before(102),
    After(102),
};
constexpr int kStepCount = sizeof(kSteps) / sizeof(kSteps[0]);
static_assert(kStepCount == 27 && kSteps[kWindowStep].phase == 50 && kSteps[26].phase == 102);

}  // namespace

int VYRARegisterDrawCallback(VYRADrawCallback_f callback, int phase, int wantsBefore, void* refcon) {
  NotePhase(phase, wantsBefore);
  return VYRADisplayRegister(gDrawCallbacks, NewRecord(callback, phase, wantsBefore, refcon));
}

int VYRAUnregisterDrawCallback(VYRADrawCallback_f callback, int phase, int wantsBefore, void* refcon) {
  return VYRADisplayUnregister(gDrawCallbacks, NewRecord(callback, phase, wantsBefore, refcon));
}

int VYRADisplayDoDrawingHook(int step, int isReflection) {
  if (step < 0 || step >= kStepCount) return 1;
  const Step& row = kSteps[step];
  if (step == kWindowStep) {
    VYRADisplayMouseDragHook();
    VYRADisplayDrawWindows();
  }
  const int result = row.before ? VYRADispatchDrawingHook(row.phase, 1, isReflection) : 1;
  if (row.after) VYRADispatchDrawingHook(row.phase, 0, isReflection);
  return row.returnsBefore ? result : 1;
}
