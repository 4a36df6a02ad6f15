// Commands: which plugin holds which, and the handlers that plugins hang before and after the host's own
// handling.
#pragma once

#include <set>
#include <tuple>

#include "VYRANeverDestroyed.h"
#include "VYRAUtilitiesCommandTable.h"

struct VYRAHeldCommand {
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  VYRACommandRef command = nullptr;
  std::uint64_t serial = 0;  // rises with each press; the same command is the same whatever it is

  bool operator<(const VYRAHeldCommand& other) const {
    return std::tie(owner, command) < std::tie(other.owner, other.command);
  }
};

extern VYRANeverDestroyed<VYRACommandTable> gPreHooks;   // called before the host acts
extern VYRANeverDestroyed<VYRACommandTable> gPostHooks;  // called after it

// What plugins have begun and not ended, by owner, then by command.
extern std::set<VYRAHeldCommand> gCommandMap;

// Calls the handlers of one phase of a command. 0: one of them stopped it; else 1.
int VYRADispatchCommandHook(VYRACommandRef command, int isBegin, int isEnd, int isBefore);

// Tells the host to continue what enabled plugins hold.
void VYRACommandRepeatHook();

// A plugin leaves: what it holds is ended, and its handlers are removed.
void VYRACommandCleanupHook(VYRAPluginID plugin);
