// Finding plugin modules on disk, in the order in which they are loaded.
#pragma once

#include <string>
#include <vector>

#include "VYRAPlugin.h"

// Loads the module of a plugin folder, "64/lin.vyp" before "lin.vyp"; its ID, or -1. The ID is put on `list`,
// if there is one, as soon as the plugin is loaded.
VYRAPluginID LoadFatPlugin(const std::string& folder, std::vector<VYRAPluginID>* list);

// Registers the host as plugin 0 and loads the plugins of its main folder, into an empty registry. Enables
// none.
void VYRAFindAndLoadPlugins(const std::string& systemPath);

// Loads the plugins below an aircraft's folder. Enables none.
void VYRAFindAndLoadAcfPlugins(const std::string& aircraftFolder);

// The same for the aircraft that the host says the user flies.
void VYRAFindAndLoadUserAcfPlugins();

// Loads and enables the plugins below a scenery package's folder, which ends in a separator.
void VYRAFindAndLoadSceneryPlugins(const std::string& packageFolder);
