// The command "list": what there is after a flight's last frame.
#pragma once

#include "Options.h"
#include "list/List.h"

namespace sim {

// Prints a list, and nothing else, to standard output; when a plugin ends the flight before that, what the
// flight told goes to standard error. The result is the exit code: that of the flight, but a flight that only
// failed has been listed all the same. Throws InputError.
int RunList(FlightOptions options, const List& list, bool asJson);

}  // namespace sim
