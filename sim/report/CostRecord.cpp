// Making and closing the record.
#include "report/CostRecord.h"

#include <cmath>

#include "InputError.h"
#include "report/CostMeter.h"
#include "report/Costs.h"

namespace sim {

CostRecord::CostRecord(const CostOptions& options, bool wantsReport)
    : isMeasuring(wantsReport || options.wantsTable || options.budgetMs > 0.0 || !options.traceFile.empty()),
      traceName(options.traceFile),
      block(MapCostBlock()) {
  block->budget = static_cast<Nanoseconds>(std::llround(options.budgetMs * 1e6));
  block->isTracing = !options.traceFile.empty();
  block->firstTracedFrame = options.firstTracedFrame;
  block->lastTracedFrame = options.lastTracedFrame;
  if (block->isTracing) trace.emplace(options.traceFile);
}

void CostRecord::CutShort(Nanoseconds then) {
  sim::CutShort(*block, then);
  if (trace) trace->End(*block);
}

void CostRecord::EnterIn(Report& report) const {
  if (!isMeasuring) return;
  EnterCosts(*block, report);
  if (block->traceFailed)
    report.otherFailures.push_back("not all of the trace could be written to " + traceName);
}

}  // namespace sim
