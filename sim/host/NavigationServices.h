// The services of navaids, the flight plan and the GPS. References of navaids are their numbers in the
// database, -1 for none; types, frequencies and lengths of texts are those of world/navigation/NavAid.h.
#pragma once

#include "VYRAHost.h"

namespace sim {

void FillNavigationServices(VYRAHostServices& services);

}  // namespace sim
