// Calls by which the host enters the library. A plugin's code can make the host call again, from inside one
// of its services; what may not happen under that code's feet waits for the outermost call.
#pragma once

#include "VYRALoaderDispatch.h"

class StHostCall;

[[gnu::visibility("hidden")]] extern const StHostCall* gHostCall;  // the innermost that runs

// A call of the host. Restores the dispatched plugin when it ends, however it ends.
class StHostCall {
 public:
  StHostCall()
      : outer(gHostCall),
        savedCall(VYRALoadRunningCall()),
        nested(outer != nullptr || VYRACallDepth(savedCall) > 0) {
    gHostCall = this;
  }
  ~StHostCall() {
    VYRAStoreRunningCall(savedCall);
    gHostCall = outer;
  }
  StHostCall(const StHostCall&) = delete;
  StHostCall& operator=(const StHostCall&) = delete;

  bool IsNested() const { return nested; }

 private:
  const StHostCall* outer;
  VYRACallWord savedCall;  // whole: a part that was just written would hold up the next reading of the whole
  bool nested;
};

// Whether the running host call came from inside another one or a plugin's code, so that the code of an
// unloaded plugin may still be on the stack.
inline bool VYRALoaderIsNested() { return gHostCall != nullptr && gHostCall->IsNested(); }
