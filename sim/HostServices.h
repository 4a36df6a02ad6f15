// The service table that the simulator hands to the library.
#pragma once

#include "VYRAHost.h"

namespace sim {

// A table with all 70 slots filled. gWorld.log must be set while the table is in use.
VYRAHostServices MakeHostServices();

}  // namespace sim
