#include "VYRAUtilitiesCommands.h"

#include <climits>
#include <cstring>
#include <memory>
#include <utility>

#include "VYRAAtEnd.h"
#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderReports.h"
#include "VYRARetiredRecords.h"
#include "VYRAWatch.h"

VYRANeverDestroyed<VYRACommandTable> gPreHooks;
VYRANeverDestroyed<VYRACommandTable> gPostHooks;
std::set<VYRAHeldCommand> gCommandMap;

namespace {

using Handler = VYRACommandCB_t;

std::uint64_t gRegistrations = 0;
std::uint64_t gPresses = 0;
VYRARetiredRecords<Handler> gRetired;

VYRACommandTable& HooksFor(int before) { return before != 0 ? *gPreHooks : *gPostHooks; }

void Remove(VYRACommandTable& hooks, Handler* handler) {
  std::unique_ptr<Handler> removed = hooks.Take(handler);
  removed->callback = nullptr;
  gRetired.Retire(std::move(removed));
}

void RemoveHandlersOf(VYRAPluginID plugin, VYRACommandTable& hooks) {
  while (Handler* handler = hooks.FirstOf(plugin)) Remove(hooks, handler);
}

int PhaseOf(int isBegin, int isEnd) {
  if (isEnd != 0) return VYRA_COMMAND_PHASE_END;
  return isBegin != 0 ? VYRA_COMMAND_PHASE_BEGIN : VYRA_COMMAND_PHASE_CONTINUE;
}

int CallHandlers(const Handler* first, VYRACommandRef command, int phase) {
  const VYRARetiredRecords<Handler>::StPass pass(gRetired);
  StDispatchWalk dispatch(VYRA_CALL_COMMAND);
  const std::uint64_t newest = gRegistrations;
  for (const Handler* handler = first; handler != nullptr; handler = handler->ofCommand.next) {
    if (handler->callback == nullptr || handler->serial > newest) continue;
    if (!dispatch(handler->owner)) continue;
    if (handler->callback(command, phase, handler->refcon) == 0) return 0;
    dispatch.Ended();
  }
  return 1;
}

// Hands each command that a plugin with an ID from `first` to `last` holds to `tell`, which calls the host.
// What is held may change with each call, so where to go next is looked up afterwards; what is pressed
// meanwhile has a higher number and is passed by, or a handler that presses a command whenever another is
// told of would keep the host here for ever.
template <class Tell>
void TellOfHeldCommands(VYRAPluginID first, VYRAPluginID last, Tell tell) {
  const std::uint64_t newest = gPresses;
  auto next = gCommandMap.lower_bound({.owner = first});
  while (next != gCommandMap.end() && next->owner <= last) {
    const VYRAHeldCommand held = *next;
    if (held.serial <= newest) tell(held);
    next = gCommandMap.upper_bound(held);
  }
}

void EndCommandsOf(VYRAPluginID plugin) {
  TellOfHeldCommands(plugin, plugin, [](const VYRAHeldCommand& held) {
    gCommandMap.erase(held);  // first: it is not to be ended twice, whatever the host's call leads to
    gHooks->CommandEnd(held.command);
  });
  // What was pressed again meanwhile, in the name of a plugin that is gone.
  gCommandMap.erase(gCommandMap.lower_bound({.owner = plugin}),
                    gCommandMap.lower_bound({.owner = plugin + 1}));
}

}  // namespace

VYRACommandRef VYRAFindCommand(const char* name) {
  return name != nullptr ? gHooks->FindCommand(name, nullptr, 0) : nullptr;
}

VYRACommandRef VYRACreateCommand(const char* name, const char* description) {
  if (name == nullptr) return nullptr;
  if (std::strncmp(name, "sim/", 4) == 0) {
    // Kept: the plugin and the log are told in different words; people search for either.
    VYRASendError("Plugin is illegally registering a command with the prefix sim/");
    VYRALogPluginWarning("It is illegal to register a command starting with sim/");
  }
  // cppcheck-suppress CastIntegerToAddressAtReturn ; it is no integer
  return gHooks->FindCommand(name, description, 1);
}

void VYRACommandBegin(VYRACommandRef command) {
  gCommandMap.insert({gDispatchedPlugin, command, ++gPresses});
  gHooks->CommandBegin(command);
}

void VYRACommandEnd(VYRACommandRef command) {
  // Also when a handler of the command throws: it was released.
  const VYRAHeldCommand held{.owner = gDispatchedPlugin, .command = command};
  const StAtEnd release([&] { gCommandMap.erase(held); });
  gHooks->CommandEnd(command);
}

// Kept: nothing is noted, so a command that the plugin holds stays held, and is ended again when it leaves.
void VYRACommandOnce(VYRACommandRef command) {
  gHooks->CommandBegin(command);
  gHooks->CommandEnd(command);
}

void VYRARegisterCommandHandler(VYRACommandRef command, VYRACommandHandler_f handler, int before,
                                void* refcon) {
  if (handler == nullptr) return;
  auto* added = new Handler;
  added->callback = handler;
  added->owner = gDispatchedPlugin;
  added->refcon = refcon;
  added->serial = ++gRegistrations;
  added->command = command;
  // Kept: before the host the newest handler comes first, after it the oldest. The plugin that hooked in
  // front of a command last is to see it first.
  if (before != 0) {
    gPreHooks->AddFirst(added);
  } else {
    gPostHooks->AddLast(added);
  }
}

void VYRAUnregisterCommandHandler(VYRACommandRef command, VYRACommandHandler_f handler, int before,
                                  void* refcon) {
  VYRACommandTable& hooks = HooksFor(before);
  Handler* record = hooks.FirstLike({command, handler, gDispatchedPlugin, refcon});
  if (record != nullptr) Remove(hooks, record);
}

int VYRADispatchCommandHook(VYRACommandRef command, int isBegin, int isEnd, int isBefore) {
  const Handler* first = HooksFor(isBefore).First(command);
  return first != nullptr ? CallHandlers(first, command, PhaseOf(isBegin, isEnd)) : 1;
}

void VYRACommandRepeatHook() {
  TellOfHeldCommands(VYRA_HOST_PLUGIN, INT_MAX, [](const VYRAHeldCommand& held) {
    if (VYRARegistryIsEnabled(held.owner)) gHooks->CommandRepeat(held.command);
  });
}

void VYRACommandCleanupHook(VYRAPluginID plugin) {
  EndCommandsOf(plugin);
  RemoveHandlersOf(plugin, *gPreHooks);
  RemoveHandlersOf(plugin, *gPostHooks);
}

int VYRAGetCommandHandlers(VYRACommandRef command, VYRACommandHandlerInfo* outHandlers, int capacity) {
  int count = 0;
  for (const int isBefore : {1, 0}) {
    for (const Handler* handler = HooksFor(isBefore).First(command); handler != nullptr;
         handler = handler->ofCommand.next) {
      if (count++ < capacity) outHandlers[count - 1] = {.plugin = handler->owner, .isBefore = isBefore};
    }
  }
  return count;
}
