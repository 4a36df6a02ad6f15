// Telling whether a flight fails in the way that is looked for. With fewer plugins a flight may fail in other
// ways too: what it expects of a plugin that is left out does not hold.
#pragma once

#include <optional>
#include <set>
#include <string>

#include "choice/ChildFlight.h"

namespace sim {

// Ways of failing, in words that are the same for each flight that fails so.
using Ways = std::set<std::string>;

// What of a flight's end failed: by which end a plugin ended it; which expectations did not hold or were not
// reached, which steps could not be carried out and which modules not be loaded; that a plugin took more of a
// frame than `budgetMs`, if that is not 0; the exit code, when nothing else is known. Empty when it passed.
Ways WaysOfFailing(const FlightOutcome& outcome, double budgetMs);

// Those of them to look for: the expectations that contain a text, when there is one; else the end that a
// plugin gave the flight, when it did; else all.
Ways WaysToLookFor(const Ways& ways, const std::optional<std::string>& expectation);

}  // namespace sim
