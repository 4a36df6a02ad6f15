// Calls by which the host enters the library, and the closing of modules around them. A plugin's code can
// make the host call an event that unloads that very plugin; its module must then stay open, and what it
// still registers must still be removed, until its code is off the stack.
#pragma once

#include <exception>
#include <vector>

#include "VYRALoaderDispatch.h"

class StHostCall;

[[gnu::visibility("hidden")]] extern const StHostCall* gHostCall;  // the innermost that runs

// The modules of unloaded plugins that wait to be closed.
struct WaitingModule {
  void* handle;
  VYRAPluginID plugin;  // VYRA_NO_PLUGIN: nothing more can come from it
};
[[gnu::visibility("hidden")]] extern std::vector<WaitingModule> gWaitingModules;

void VYRALoaderCloseWaitingModules();

// A call of the host into the library. Restores the dispatched plugin when it ends, however it ends. Before
// and after one that is not nested in a plugin's code, the modules that had to wait are closed.
class StHostCall {
 public:
  // Exceptions that were on their way up the stack when the host called are the host's own business. Calls
  // that may close modules count them; for the others they only put off the closing of those that wait.
  explicit StHostCall(int exceptionsBefore = 0) : StHostCall(Begin{exceptionsBefore}) {
    if (!nested && !gWaitingModules.empty()) VYRALoaderCloseWaitingModules();
  }
  ~StHostCall() noexcept(false) {
    const bool mayClose = !nested && !gWaitingModules.empty() && std::uncaught_exceptions() <= exceptions;
    VYRAStoreRunningCall(savedCall);
    gHostCall = outer;
    if (mayClose) VYRALoaderCloseWaitingModules();
  }
  StHostCall(const StHostCall&) = delete;
  StHostCall& operator=(const StHostCall&) = delete;

  bool IsNested() const { return nested; }
  int ExceptionsBefore() const { return exceptions; }

 private:
  struct Begin {
    int exceptions;
  };
  // Apart, so that the call is ended in order when the closing of modules throws.
  explicit StHostCall(Begin begin)
      : outer(gHostCall),
        savedCall(VYRALoadRunningCall()),
        exceptions(begin.exceptions),
        nested(outer != nullptr || VYRACallDepth(savedCall) > 0) {
    gHostCall = this;
  }

  const StHostCall* outer;
  VYRACallWord savedCall;  // whole: a part that was just written would hold up the next reading of the whole
  int exceptions;
  bool nested;
};

// Whether the running host call came from inside a plugin's code, so that the code of an unloaded plugin
// may still be on the stack.
bool VYRALoaderIsNested();

// Closes the module of an unloaded plugin, now or as soon as its code cannot be on the stack; in the second
// case what the plugin registers until then is removed as well. Its ID must not be given out meanwhile.
void VYRALoaderCloseModule(void* moduleHandle, VYRAPluginID plugin);

// Closes a module that was not accepted, whose code has returned; now, unless an exception is on its way.
// `plugin` is the ID that it had while it was asked.
void VYRALoaderCloseRejectedModule(void* moduleHandle, VYRAPluginID plugin);
