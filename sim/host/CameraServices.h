// The camera that a frame is seen from: the simulator's own, or a plugin's.
#pragma once

#include "VYRACamera.h"
#include "VYRAHost.h"

namespace sim {

void FillCameraServices(VYRAHostServices& services);

// Settles the camera of a frame, before it is drawn: behind the user's aircraft, unless a plugin sets it.
void AskCamera();

// Takes the simulator's own camera nearer to the aircraft, or farther away.
void MoveChaseCamera(double factor);

// Turns it around the aircraft: to the right, and higher, in degrees; and back to behind it.
void TurnChaseCamera(double right, double higher);
void TurnChaseCameraBack();

bool PluginHasCamera();
const VYRACameraPosition& Camera();

}  // namespace sim
