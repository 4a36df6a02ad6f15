// The command "run": reads its input, flies, and reports.
#pragma once

#include "Options.h"

namespace sim {

// Takes from the flight file what the command line leaves open: the simulator folder, frames, rate, plugins.
// Throws InputError, also when one of the first three is said nowhere.
void CompleteFromFlightFile(FlightOptions& options);

// The exit code of the process (report/Report.h). Throws InputError.
int Run(FlightOptions options);

}  // namespace sim
