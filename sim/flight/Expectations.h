// Checking one expectation of a flight.
#pragma once

#include <string>

#include "flight/Flight.h"

namespace sim {

class Log;

struct Verdict {
  bool holds;
  std::string claim;  // what was expected
  std::string found;
};

Verdict Check(const Claim& claim, const Log& log);

}  // namespace sim
