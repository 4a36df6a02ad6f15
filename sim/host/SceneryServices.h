// The services of the scenery library, and the reading of all scenery anew.
#pragma once

#include "VYRAHost.h"

namespace sim {

void FillSceneryServices(VYRAHostServices& services);

// Reads the packages' indexes and the models that are loaded anew. What is wrong with them is told in the
// log, and stays as it was. Plugins are told by a message.
void ReloadScenery();

int CountSceneryReloads();

}  // namespace sim
