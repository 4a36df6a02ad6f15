// Enabling, disabling and unloading plugins.
#pragma once

#include <vector>

#include "VYRAPlugin.h"

// The plugins of the user's aircraft, in the order of loading.
extern std::vector<VYRAPluginID> gCurrentAircraftPluginIDS;

void VYRAEnableAllPlugins();
void VYRADisableAllPlugins();

void VYRAEnableACFPlugins();
void VYRADisableACFPlugins();

// Stops a plugin, removes everything it registered and closes its module. Its record keeps its place.
void UnloadOnePlugin(VYRAPluginID plugin);

// Everything of an unload but the closing of the module, whose handle it returns (null when it was closed
// before). A plugin that refused to start is not owed its stop callback.
void* VYRALoaderRemovePlugin(VYRAPluginID plugin, bool owesStop);

// Takes a closed record off the registry, if it is the last one, so that its ID is given out again.
void VYRALoaderDropLastRecord(VYRAPluginID plugin);

// Unloads every plugin and empties the registry.
void VYRAUnloadPlugins();

// Unloads the aircraft's plugins, and drops their records where they lie at the end of the registry.
void VYRAUnloadAcfPlugin();
