// Who holds the AI planes, and what the host is told of the holder's wishes.
#pragma once

// The model of a plane that the host is about to load: overwrites ioPath with the holder's wish, if there is
// one and the library is not itself loading a model. ioPath must have room for it.
void VYRAHandleUpdatePlaneNameAndPath(int planeIndex, char* name, char* ioPath);

// Notes how many planes the host has, and returns how many it is to run.
int VYRAHandleGetNumberPlanesToHandle(int total, int flag);

// A plugin is about to be disabled: it gives the planes back, and whoever waits is told.
void VYRAPlaneDisableHook(VYRAPluginID plugin);

// A plugin leaves: it waits no more, and gives the planes back if it still has them.
void VYRAPlaneCleanupHook(VYRAPluginID plugin);
