// All planes, as plugins see them: models, their number, who flies and draws those of the simulator.
#pragma once

#include <string>

#include "VYRAHost.h"

namespace sim {

void FillPlaneServices(VYRAHostServices& services);

// Loads the AI planes' models. To be called once the library is started.
void StartAiPlanes();

// Notices that the planes changed hands, and loads them anew. To be called once per frame.
void WatchAiPlanes();

// The signature of the plugin that holds the AI planes; empty when none does.
std::string AiPlanesOwner();

// Draws the planes that no plugin has drawn in this frame. To be called at the end of its drawing.
void DrawOtherPlanes();

// How often plugins drew a plane in the frame that was drawn last.
int CountPlaneDraws(int plane);

}  // namespace sim
