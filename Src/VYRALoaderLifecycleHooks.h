// The one table of what the subsystems do when a plugin is disabled and when it leaves, in its fixed order.
// Adding a subsystem is adding a row.
#pragma once

#include "VYRADefs.h"

// What the subsystems take from a plugin that is about to be disabled, while it may still be called.
void VYRALoaderRunDisableHooks(VYRAPluginID plugin);

// Removes everything that a plugin registered, subsystem by subsystem. The plugin is not called any more.
void VYRALoaderRunCleanupHooks(VYRAPluginID plugin);
