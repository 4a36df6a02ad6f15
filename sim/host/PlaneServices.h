// The AI planes: three besides the user's, each with a model and a switch. They do not move.
#pragma once

#include <string>

#include "VYRAHost.h"

namespace sim {

void FillPlaneServices(VYRAHostServices& services);

// To be called before the library is started: the switches are datarefs of the simulator.
void PublishPlaneSwitches();

// Loads the AI planes' models. To be called once the library is started.
void StartAiPlanes();

// Notices that the planes changed hands, and loads them anew. To be called once per frame.
void WatchAiPlanes();

// The signature of the plugin that holds the AI planes; empty when none does.
std::string AiPlanesOwner();

}  // namespace sim
