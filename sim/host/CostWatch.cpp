// The clock is read twice for a call: as it begins and as it ends.
#include "host/CostWatch.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <string_view>

#include "VYRAWatch.h"
#include "host/CallWatchers.h"
#include "report/CostMeter.h"
#include "report/TraceFile.h"

namespace sim {
namespace {

static_assert(kOpening == VYRA_CALL_OPENING && kStart == VYRA_CALL_START && kEnable == VYRA_CALL_ENABLE &&
              kClosing == VYRA_CALL_CLOSING && kCallKinds == VYRA_CALL_ERROR + 1);

struct Measuring {
  CostBlock& costs;
  TraceFile* trace;
  CostMeter meter;
};

std::optional<Measuring> gMeasuring;

void BeginCall(const VYRARunningCall* call, void* refcon) {
  static_cast<Measuring*>(refcon)->meter.BeginCall(
      {call->plugin, call->kind, call->name, call->signature, call->path}, ReadClock());
}

void EndCall(const VYRARunningCall* /*call*/, void* refcon) {
  auto& [costs, trace, meter] = *static_cast<Measuring*>(refcon);
  meter.EndCall(ReadClock());
  if (trace == nullptr || !TraceFile::IsNearlyFull(costs)) return;
  trace->WriteEvents(costs);
  meter.Excuse(ReadClock());
}

void NameKinds(CostBlock& costs) {
  for (std::size_t kind = 1; kind < kCallKinds; ++kind) {
    const std::string_view name = VYRAGetCallKindName(static_cast<int>(kind));
    std::copy_n(name.data(), std::min(name.size(), costs.kindNames[kind].size() - 1),
                costs.kindNames[kind].data());
  }
}

}  // namespace

void StartMeasuring(CostBlock& costs, TraceFile* trace) {
  NameKinds(costs);
  gMeasuring.emplace(Measuring{costs, trace, CostMeter(costs, ReadClock())});
  AddCallWatcher({.structSize = sizeof(VYRAWatcher),
                  .wantsAccessors = 1,
                  .begin = BeginCall,
                  .end = EndCall,
                  .refcon = &*gMeasuring});
}

void StopMeasuring() {
  if (!gMeasuring) return;
  RemoveCallWatcher(&*gMeasuring);
  if (gMeasuring->trace != nullptr) gMeasuring->trace->End(gMeasuring->costs);
  gMeasuring.reset();
}

const CostBlock* MeasuredCosts() { return gMeasuring ? &gMeasuring->costs : nullptr; }

MeasuredFrame::MeasuredFrame(int frame) : exceptions(std::uncaught_exceptions()) {
  if (gMeasuring) gMeasuring->meter.BeginFrame(frame, ReadClock());
}

MeasuredFrame::~MeasuredFrame() {
  if (!gMeasuring) return;
  auto& [costs, trace, meter] = *gMeasuring;
  if (std::uncaught_exceptions() > exceptions)
    CutShort(costs, ReadClock());
  else
    meter.EndFrame(ReadClock());
  if (trace != nullptr && TraceFile::IsHalfFull(costs)) trace->WriteEvents(costs);
}

void MarkInTrace(std::string_view text) {
  if (gMeasuring && gMeasuring->trace != nullptr)
    gMeasuring->trace->WriteMark(gMeasuring->costs, text, ReadClock());
}

}  // namespace sim
