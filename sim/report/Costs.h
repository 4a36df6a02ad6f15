// The costs of a flight as figures: in the report, and as a table.
#pragma once

#include <optional>
#include <string_view>

#include "report/CostBlock.h"
#include "report/Report.h"

namespace sim {

// Enters what was measured, of every plugin that was started, also of those that the report does not know;
// and as a failure, who took longer in a frame than the budget allows.
void EnterCosts(const CostBlock& costs, Report& report);

// What a plugin takes of a frame, over all frames until now in which it was there. Nothing of one that was
// not called yet.
std::optional<CallCost> CostPerFrame(const CostBlock& costs, std::string_view signature);

// Prints the table on standard output, dearest plugin first.
void PrintCosts(const Report& report);

}  // namespace sim
