// The command line's options of costs.
#pragma once

#include <CLI/App.hpp>

#include "report/CostOptions.h"

namespace sim {

void AddCostOptions(CLI::App& command, CostOptions& options);

}  // namespace sim
