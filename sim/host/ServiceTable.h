// The service table that the simulator hands to the library, put together from the families.
#pragma once

#include "VYRAHost.h"

namespace sim {

constexpr int kHostVersion = 600;  // above 567, so that the library destroys menus

// A table with all 70 slots filled. gLog must be set while the table is in use.
VYRAHostServices MakeHostServices();

}  // namespace sim
