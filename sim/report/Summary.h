// The summary at the end of a flight.
#pragma once

#include "report/Histogram.h"
#include "report/Report.h"

namespace sim {

void EnterPassTimes(FlightTotals& totals, const Histogram& passes);

// Prints it on standard output.
void PrintSummary(const Report& report);

}  // namespace sim
