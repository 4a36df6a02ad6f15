// The flights of a search get the arguments of the search, but for those that are its own.
#include "BisectArguments.h"

#include <CLI/CLI.hpp>
#include <set>
#include <string>

namespace sim {
namespace {

constexpr int kMostAttempts = 1000;

// What the search itself decides, and what would write a file over and over.
const std::set<std::string> kNotForFlights = {
    "--help", "--system", "--log",  "--report",       "--state",         "--trace",       "--trace-frames",
    "--cost", "--core",   "--keep", "--keep-modules", "--no-supervisor", "--expectation", "--attempts"};

}  // namespace

void AddBisectOptions(CLI::App& command, BisectOptions& options) {
  command
      .add_option("--keep", options.keep,
                  "Never leave out these plugins; a pattern as for --skip. May be given several times")
      ->allow_extra_args(false);
  command.add_option("--expectation", options.expectation,
                     "Look for the failure of the expectations that have this text in them");
  command
      .add_option("--attempts", options.attempts,
                  "Fly each choice of plugins up to so many times, for failures that come and go")
      ->check(CLI::Range(1, kMostAttempts));
}

void CompleteBisectOptions(const CLI::App& command, const FlightOptions& flight, BisectOptions& options) {
  options.systemPath = flight.systemPath;
  options.budgetMs = flight.costs.budgetMs;
  for (const CLI::Option* const option : command.get_options()) {
    const std::string name = option->get_single_name();
    if (option->count() == 0 || kNotForFlights.contains("--" + name)) continue;
    const bool isFlag = option->get_items_expected_max() == 0;
    for (const std::string& value : option->results()) {
      options.runArguments.push_back("--" + name);
      if (!isFlag) options.runArguments.push_back(value);
    }
  }
}

}  // namespace sim
