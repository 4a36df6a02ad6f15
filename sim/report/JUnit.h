// The report as JUnit writes it, for servers that show results of tests.
#pragma once

#include <string>

#include "report/Report.h"

namespace sim {

// Writes a test case for the flight itself, one for each module that was loaded or could not be, and one for
// each expectation. Throws InputError.
void WriteJUnit(const Report& report, const std::string& fileName);

}  // namespace sim
