// The services of scenery objects, and the loads that are completed some frames after they were asked for.
#pragma once

#include "VYRAHost.h"

namespace sim {

void FillObjectServices(VYRAHostServices& services);

// Completes the asynchronous loads whose time has come. To be called once per frame.
void FinishLoads();

// Completes those that are still under way after the library's shutdown, which settles them.
void FinishAllLoads();

}  // namespace sim
