// The summary at the end of a flight.
#pragma once

#include <vector>

#include "report/Report.h"

namespace sim {

// Sorts the times.
void EnterPassTimes(FlightTotals& totals, std::vector<float>& passMicroseconds);

// Prints it on standard output.
void PrintSummary(const Report& report);

}  // namespace sim
