// The services whose subsystem this simulator does not have yet.
#pragma once

#include "VYRAHost.h"

namespace sim {

// Fills those slots with functions that answer 0, null or nothing.
void FillNeutralServices(VYRAHostServices& services);

}  // namespace sim
