// What a flight's costs are kept in: a block that its processes share, and the trace.
#pragma once

#include <optional>
#include <string>

#include "report/CostBlock.h"
#include "report/CostOptions.h"
#include "report/TraceFile.h"

namespace sim {

struct Report;

class CostRecord {
 public:
  // To be made before the flight, and before it has a process of its own. Throws InputError when the trace
  // cannot be opened.
  // `wantsReport`: figures are wanted, whatever the options say.
  CostRecord(const CostOptions& options, bool wantsReport);

  bool IsMeasuring() const { return isMeasuring; }

  CostBlock& Block() { return *block; }
  TraceFile* Trace() { return trace ? &*trace : nullptr; }

  // Ends the record of a flight whose process has died: the calls that it was in end then.
  void CutShort(Nanoseconds then);

  // The costs, when they were measured, and what of them fails the flight.
  void EnterIn(Report& report) const;

 private:
  bool isMeasuring;
  std::string traceName;
  SharedCostBlock block;
  std::optional<TraceFile> trace;
};

}  // namespace sim
