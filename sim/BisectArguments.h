// The command line of "bisect": that of "run", and what the search needs.
#pragma once

#include <CLI/App.hpp>

#include "Options.h"
#include "bisect/Bisect.h"

namespace sim {

void AddBisectOptions(CLI::App& command, BisectOptions& options);

// To be called when the command line was read: what the search takes from the flight's options.
void CompleteBisectOptions(const CLI::App& command, const FlightOptions& flight, BisectOptions& options);

}  // namespace sim
