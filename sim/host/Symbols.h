// The functions that the simulator offers plugins by name, through VYRAFindSymbol.
#pragma once

#include "VYRAHost.h"

namespace sim {

void FillSymbolServices(VYRAHostServices& services);

}  // namespace sim
