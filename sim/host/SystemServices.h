// The services that belong to no subsystem: time, paths, versions, language, messages and the log.
#pragma once

#include "VYRAHost.h"

namespace sim {

// gLog must be set while the services are in use.
void FillSystemServices(VYRAHostServices& services);

// How often the library reloaded the plugins.
int CountReloads();

}  // namespace sim
