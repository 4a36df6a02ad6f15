// The simulator of the driver: the services that it gives, each of which may lead to events of its own, and
// the events and hooks themselves.
#pragma once

#include "Book.h"
#include "VYRAHost.h"

namespace calls {

struct Host {
  Host();

  // Starts the library with one of the prepared folders.
  void Start();
  // One event or hook, or a start, a shutdown, a reload. A plugin's exception may leave it.
  void Event();
  // The same, now and then, from inside a service.
  void MayAct();
  // Completes a load that the library waits for.
  void CompleteLoad();

  VYRAHostServices services = {};
  float time = 0;
  VYRACommandRef commands[5] = {};
  int loads[6] = {};  // how often each object was loaded, less its unloads
  struct PendingLoad {
    VYRAObjectLoaded_f completion;
    void* delivery;
  };
  std::vector<PendingLoad> pendingLoads;
  int menus = 0;  // made so far, as are the next two
  int items = 0;
  int messages = 0;  // shown to the user
};

extern Host gHost;

// The step of the host's frame that calls a draw callback, or 0.
int StepOfDrawing(int phase, int isBefore);

}  // namespace calls
