// Carrying out one step of a flight.
#pragma once

#include <string>

#include "flight/Flight.h"

namespace sim {

struct Outcome {
  bool succeeded;
  std::string text;  // what happened, for the reader
};

// The action is not const: a message's text goes to a plugin, which may write into it.
Outcome CarryOut(Action& action);

}  // namespace sim
