// The camera that the next frame is seen from: the simulator's own, or a plugin's.
#pragma once

#include "VYRACamera.h"
#include "VYRAHost.h"

namespace sim {

void FillCameraServices(VYRAHostServices& services);

// The camera of the next frame: behind the user's aircraft, unless a plugin sets it.
void AskCamera();

bool PluginHasCamera();
const VYRACameraPosition& Camera();

}  // namespace sim
