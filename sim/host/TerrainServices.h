// Services 7, 8 and the probes: plugins ask where the ground is.
#pragma once

#include "VYRAHost.h"

namespace sim {

void FillTerrainServices(VYRAHostServices& services);

}  // namespace sim
