// Calls by which the host enters the library, and the closing of modules around them. A plugin's code can
// make the host call an event that unloads that very plugin; its module must then stay open, and what it
// still registers must still be removed, until its code is off the stack.
#pragma once

#include "VYRADefs.h"

// A call of the host into the library. Restores the dispatched plugin when it ends, however it ends. Before
// and after one that is not nested in a plugin's code, the modules that had to wait are closed.
class StHostCall {
 public:
  StHostCall();
  ~StHostCall() noexcept(false);
  StHostCall(const StHostCall&) = delete;
  StHostCall& operator=(const StHostCall&) = delete;

  bool IsNested() const { return nested; }

  // The exceptions that were on their way up the stack when the call began.
  int ExceptionsBefore() const { return exceptions; }

 private:
  const StHostCall* outer;
  VYRAPluginID savedPlugin;
  bool nested;
  int exceptions;
};

// Whether the running host call came from inside a plugin's code, so that the code of an unloaded plugin
// may still be on the stack.
bool VYRALoaderIsNested();

// Whether modules of unloaded plugins wait to be closed.
bool VYRALoaderHasWaitingModules();

// Closes the module of an unloaded plugin, now or as soon as its code cannot be on the stack; in the second
// case what the plugin registers until then is removed as well. Its ID must not be given out meanwhile.
void VYRALoaderCloseModule(void* moduleHandle, VYRAPluginID plugin);

// Closes a module that was not accepted, whose code has returned; now, unless an exception is on its way.
void VYRALoaderCloseRejectedModule(void* moduleHandle);
