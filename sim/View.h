// What the user looks at: the frame as it is drawn, and the camera that it is drawn from.
#pragma once

#include "VYRACamera.h"
#include "VYRAHost.h"

namespace sim {

void FillViewServices(VYRAHostServices& services);

// Goes through the drawing of a frame. Nothing of the simulator's own is drawn.
void DrawFrame();

// The camera of the next frame: behind the user's aircraft, unless a plugin sets it.
void AskCamera();

bool PluginHasCamera();
const VYRACameraPosition& Camera();

}  // namespace sim
