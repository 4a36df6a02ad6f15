// The command "run": reads its input, flies, and reports.
#pragma once

#include "Options.h"

namespace sim {

// The exit code of the process (report/Report.h). Throws InputError.
int Run(const FlightOptions& options);

}  // namespace sim
