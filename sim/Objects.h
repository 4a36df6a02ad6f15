// Scenery objects. An object is any file of the simulator folder; loading it checks that it is there.
#pragma once

#include "VYRAHost.h"

namespace sim {

void FillObjectServices(VYRAHostServices& services);

// Completes the asynchronous loads whose time has come. To be called once per frame.
void FinishLoads();

// Completes those that are still under way after the library's shutdown, which settles them.
void FinishAllLoads();

// Loads that were not released yet; an object that was loaded twice counts twice.
int LoadedObjects();

}  // namespace sim
