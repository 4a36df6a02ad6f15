// Enabling, disabling and unloading plugins.
#pragma once

#include <vector>

#include "VYRALoaderClosing.h"
#include "VYRAPlugin.h"

// The plugins of the user's aircraft, in the order of loading.
extern std::vector<VYRAPluginID> gCurrentAircraftPluginIDS;

void VYRAEnableAllPlugins();
void VYRADisableAllPlugins();

// In the order of the list.
void VYRAEnablePlugins(const std::vector<VYRAPluginID>& plugins);

void VYRAEnableACFPlugins();
void VYRADisableACFPlugins();

// Stops a plugin, removes everything it registered and closes its module. Its record keeps its place. As all
// that takes plugins down, it goes on where it ended when an exception left it and it is called again.
void UnloadOnePlugin(VYRAPluginID plugin);

// Everything of an unload but the closing of the module, which it returns (without a handle when it was taken
// before). A plugin that refused to start is not owed its stop callback.
ClosingModule VYRALoaderRemovePlugin(VYRAPluginID plugin, bool owesStop);

// Has a plugin's ID given out again, as soon as its record is closed and at the end of the registry.
void VYRALoaderGiveBackID(VYRAPluginID plugin);

// Unloads every plugin and empties the registry.
void VYRAUnloadPlugins();

// Unloads the aircraft's plugins, and gives their IDs back.
void VYRAUnloadAcfPlugin();
