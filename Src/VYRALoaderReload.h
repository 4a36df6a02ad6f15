// The reload, in which all plugins are unloaded and loading starts all over.
#pragma once

// Asked for with VYRAReloadPlugins, or left by an exception, and not carried out yet.
bool VYRALoaderOwesReload();

// Stops and unloads all plugins, then loads and enables them afresh; or goes on with a reload that an
// exception left. No plugin's code may be on the stack.
void VYRAReloadPluginsInternal();

// A shutdown comes instead of any reload.
void VYRALoaderForgetReload();
