// "vyra-sim bisect": which plugin, or which smallest set of them together, makes a flight fail.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace sim {

struct BisectOptions {
  std::string systemPath;
  std::vector<std::string> runArguments;   // of "vyra-sim run", without those that name files to write
  std::vector<std::string> keep;           // patterns of plugins that are never left out
  std::optional<std::string> expectation;  // a text in the one that is looked for
  double budgetMs = 0.0;                   // what a plugin may take of a frame; 0 for no limit
  int attempts = 1;                        // so often flies a choice of plugins that passes
};

constexpr int kExitFound = 0;
constexpr int kExitNotFound = 1;  // the flight passes, the failure comes and goes, or needs no plugin

// Tells on standard output what it does. Throws InputError.
int Bisect(const BisectOptions& options);

}  // namespace sim
