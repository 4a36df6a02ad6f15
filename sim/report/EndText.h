// How a flight ended badly, for the reader at the terminal.
#pragma once

#include <string>

#include "report/Report.h"

namespace sim {

// One line that says it all, and below it the module, the simulator's call and the backtrace, each on a line
// of its own. A culprit without a path stands for none.
std::string DescribeEnd(Result result, const Culprit& culprit);

// "frame 12"; "start" before the first.
std::string MomentOf(const Culprit& culprit);

}  // namespace sim
