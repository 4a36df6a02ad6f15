// Loading one module: opening it, asking it for its identity, and giving it a place in the registry or
// leaving no trace of it.
#pragma once

#include <string>
#include <vector>

#include "VYRADefs.h"

// Loads, starts and registers one module; its ID, or -1. With `verbose`, a file that cannot be loaded is
// logged; a module that can, but does not start, is logged in any case. Enables nothing.
//
// The ID is put on `list`, if there is one, as soon as the plugin is loaded: before anybody else hears of it.
// When its start throws, the exception goes on once the module has left no trace.
VYRAPluginID LoadOnePlugin(const std::string& path, int verbose, std::vector<VYRAPluginID>* list);
