// Who threw the exception that ended a flight. When the simulator catches it, the plugin's calls are gone
// from the stack; so what runs is noted whenever an exception is thrown.
#pragma once

#include <optional>

#include "report/Report.h"

namespace sim {

// The plugin that let the exception out which is being handled, and what is known of the exception; nothing
// when it came out of none of the simulator's calls into the library. To be called in a handler, while the
// module that threw it is still open; forgets the call into the library.
std::optional<Culprit> CulpritOfException();

}  // namespace sim
