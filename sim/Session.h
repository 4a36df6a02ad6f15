// A flight from the library's start to its shutdown. What happens in it is told as events.
#pragma once

#include "Options.h"
#include "flight/Flight.h"

namespace sim {

class CostRecord;
class Log;

enum class FlightOutcome {
  Ended,
  StartsOver,  // in another process
  NotFlown     // as the user wants it
};

// Flies once per process, over gWorld, whose system path is set. Whatever plugins do is an event, and none of
// it is thrown.
FlightOutcome Fly(const FlightOptions& options, Flight plan, Log& log, CostRecord& costs);

}  // namespace sim
