// The closing of modules, and when it must wait: as long as code of the module may be on the stack, and as
// long as there is an exception that may point into it.
#pragma once

#include <string>
#include <vector>

#include "VYRADefs.h"

// A module that is to be closed, and whose it was.
struct ClosingModule {
  void* handle = nullptr;  // null: there is nothing to close
  VYRAPluginID plugin = VYRA_NO_PLUGIN;
  std::string signature;
  // Code of the plugin may be on the stack. What that registers goes when the outermost call ends; the ID is
  // not given out before.
  bool holdsID = false;
};

// Those that wait.
[[gnu::visibility("hidden")]] extern std::vector<ClosingModule> gWaitingModules;

// Closes the module of an unloaded plugin, now or later. Its destructors run as nobody: what they register is
// never called.
void VYRALoaderCloseModule(ClosingModule module);

// Closes a module that was not accepted, whose code has returned, so that only an exception can hold it up.
// Its destructors run as `dispatched`; who is somebody cleans up after them.
void VYRALoaderCloseRejectedModule(ClosingModule module, VYRAPluginID dispatched);

// Frees the IDs that wait, and closes the modules that wait unless there is an exception. No plugin's code
// may be on the stack. Left by an exception, it goes on where it ended when it is called again.
void VYRALoaderCloseWaitingModules();
void VYRALoaderFreeWaitingIDs();
