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
  // What an exception kept from unloading all that it was to is called again.
  static void GoOn();
  // An event, now and then, from inside a service.
  void MayAct();
  // Completes a load that the library waits for.
  void CompleteLoad();
  // The place of a command among those that there are.
  int NumberOf(VYRACommandRef command) const;

  VYRAHostServices services = {};
  float time = 0;
  VYRACommandRef commands[5] = {};
  int loads[6] = {};  // how often each object was loaded, less its unloads
  struct PendingLoad {
    VYRAObjectLoaded_f completion;
    void* delivery;
    Registration* record;
  };
  std::vector<PendingLoad> pendingLoads;
  int menus = 0;  // made so far, as are the next two
  int items = 0;
  int messages = 0;                 // shown to the user
  Registration* loading = nullptr;  // of the load that is asked for
  int probeHits = 0;                // the last answers
  int aircraft = 0;
  bool isQuiet = false;  // no service leads to anything
};

extern Host gHost;

// What the host is asked for, where the order and the arguments are looked at: Call::services.
enum Service {
  kCreateMenu,
  kAppendMenuItem,
  kSetMenuItemName,
  kRemoveMenuItem,
  kDestroyMenu,
  kSetAircraftModel,
  kButton,
  kCommand,
  kDrawObject,
  kProbe,
  kCreateProbe,
  kLoadObject,
  kUnloadObject
};

// Services lead to nothing while this lives: the driver asks the library for itself.
class StQuiet {
 public:
  StQuiet() { gHost.isQuiet = true; }
  ~StQuiet() { gHost.isQuiet = false; }
  StQuiet(const StQuiet&) = delete;
  StQuiet& operator=(const StQuiet&) = delete;
};

// The step of the host's frame that calls a draw callback, or 0.
int StepOfDrawing(int phase, int isBefore);

}  // namespace calls
