// The camera: which plugin controls it, and what the host and the lifecycle call of it.
#pragma once

#include "VYRADefs.h"

// Lets the controlling plugin set the camera of a frame, through the host's seven values. 0 when it did, 1
// when the host keeps its own.
int VYRAAdjustCamera(float* x, float* y, float* z, float* pitch, float* heading, float* roll, float* zoom);

// The host's view changes: ends a control that was taken until then.
void VYRAReleaseCamera();

// A plugin is disabled or leaves: ends its control, whatever its duration.
void VYRACameraDisableHook(VYRAPluginID plugin);
void VYRACameraCleanupHook(VYRAPluginID plugin);
