// Finding plugin modules on disk, in the order in which they are loaded, and the reload that starts all over.
#pragma once

#include <string>

#include "VYRAPlugin.h"

// A reload that was asked for with VYRAReloadPlugins and not carried out yet.
extern bool gScheduleReload;

// Loads the module of a plugin folder, "64/lin.vyp" before "lin.vyp"; its ID, or -1.
VYRAPluginID LoadFatPlugin(const std::string& folder);

// Registers the host as plugin 0 and loads the plugins of its main folder. Enables none.
void VYRAFindAndLoadPlugins(const std::string& systemPath);

// Loads the plugins below an aircraft's folder. Enables none.
void VYRAFindAndLoadAcfPlugins(const std::string& aircraftFolder);

// The same for the aircraft that the host says the user flies.
void VYRAFindAndLoadUserAcfPlugins();

// Loads and enables the plugins below a scenery package's folder, which ends in a separator.
void VYRAFindAndLoadSceneryPlugins(const std::string& packageFolder);

// Stops and unloads all plugins, then loads and enables them afresh.
void VYRAReloadPluginsInternal();
