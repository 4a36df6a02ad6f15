// The one table of what the subsystems do when a plugin is disabled and when it leaves, in its fixed order.
// Adding a subsystem is adding a row.
#pragma once

#include "VYRADefs.h"

// What the subsystems take from a plugin that is disabled: each, whatever the others lead to. While the
// plugin may be called it is told.
void VYRALoaderRunDisableHooks(VYRAPluginID plugin);

// Removes everything that a plugin registered, subsystem by subsystem. The plugin is not called any more.
void VYRALoaderRunCleanupHooks(VYRAPluginID plugin);
