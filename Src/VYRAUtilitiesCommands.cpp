#include "VYRAUtilitiesCommands.h"

#include <cstring>
#include <memory>
#include <utility>

#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderReports.h"

VYRACommandTable gPreHooks;
VYRACommandTable gPostHooks;
std::set<VYRAHeldCommand> gCommandMap;

namespace {

using Handler = VYRACommandCB_t;

std::uint64_t gRegistrations = 0;
int gPasses = 0;                                         // on their way through handlers
std::vector<std::unique_ptr<Handler>> gRemovedHandlers;  // on which one of them may stand

VYRACommandTable& HooksFor(int before) { return before != 0 ? gPreHooks : gPostHooks; }

class StPass {
 public:
  StPass() { ++gPasses; }
  ~StPass() {
    if (--gPasses == 0 && !gRemovedHandlers.empty()) gRemovedHandlers.clear();
  }
  StPass(const StPass&) = delete;
  StPass& operator=(const StPass&) = delete;
};

// Takes the handler that `link` leads to out of its list. A pass that stands on it goes on from it, past
// those that are removed after it.
void Remove(VYRACommandTable& hooks, Handler*& link) {
  std::unique_ptr<Handler> handler(link);
  hooks.owned.Remove(handler->owner, handler.get());
  link = handler->next;
  handler->callback = nullptr;
  if (gPasses > 0) gRemovedHandlers.push_back(std::move(handler));
}

void RemoveHandlersOf(VYRAPluginID plugin, VYRACommandTable& hooks) {
  while (const Handler* handler = hooks.owned.First(plugin)) {
    Handler** link = &hooks.At(handler->command).first;
    while (*link != handler) link = &(*link)->next;
    Remove(hooks, *link);
  }
}

int PhaseOf(int isBegin, int isEnd) {
  if (isEnd != 0) return VYRA_COMMAND_PHASE_END;
  return isBegin != 0 ? VYRA_COMMAND_PHASE_BEGIN : VYRA_COMMAND_PHASE_CONTINUE;
}

int CallHandlers(const Handler* first, VYRACommandRef command, int phase) {
  const StPass pass;
  StDispatchWalk dispatch(VYRA_CALL_COMMAND);
  const std::uint64_t newest = gRegistrations;
  for (const Handler* handler = first; handler != nullptr; handler = handler->next) {
    if (handler->callback == nullptr || handler->serial > newest) continue;
    if (!dispatch(handler->owner)) continue;
    if (handler->callback(command, phase, handler->refcon) == 0) return 0;
    dispatch.Ended();
  }
  return 1;
}

// The commands that are held may change with each call of the host, so both walks over them look up where
// they go next. Each only moves up, and so comes to an end.

void EndCommandsOf(VYRAPluginID plugin) {
  auto next = gCommandMap.lower_bound({plugin, nullptr});
  while (next != gCommandMap.end() && next->owner == plugin) {
    const VYRAHeldCommand held = *next;
    gCommandMap.erase(next);  // first: it is not to be ended twice, whatever the host's call leads to
    gHooks->CommandEnd(held.command);
    next = gCommandMap.upper_bound(held);
  }
  // What was pressed again meanwhile, in the name of a plugin that is gone.
  std::erase_if(gCommandMap, [&](const VYRAHeldCommand& held) { return held.owner == plugin; });
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
  return gHooks->FindCommand(name, description != nullptr ? description : "", 1);
}

void VYRACommandBegin(VYRACommandRef command) {
  gCommandMap.insert({gDispatchedPlugin, command});
  gHooks->CommandBegin(command);
}

void VYRACommandEnd(VYRACommandRef command) {
  gHooks->CommandEnd(command);
  gCommandMap.erase({gDispatchedPlugin, command});
}

// Kept: nothing is noted, so a command that the plugin holds stays held, and is ended again when it leaves.
void VYRACommandOnce(VYRACommandRef command) {
  gHooks->CommandBegin(command);
  gHooks->CommandEnd(command);
}

void VYRARegisterCommandHandler(VYRACommandRef command, VYRACommandHandler_f handler, int before,
                                void* refcon) {
  if (handler == nullptr) return;
  VYRACommandTable& hooks = HooksFor(before);
  Handler** link = &hooks.At(command).first;
  // Kept: before the host the newest handler comes first, after it the oldest. The plugin that hooked in
  // front of a command last is to see it first.
  while (before == 0 && *link != nullptr) link = &(*link)->next;
  *link = new Handler{{}, {}, handler, gDispatchedPlugin, refcon, ++gRegistrations, *link, command};
  hooks.owned.Add(gDispatchedPlugin, *link);
}

void VYRAUnregisterCommandHandler(VYRACommandRef command, VYRACommandHandler_f handler, int before,
                                  void* refcon) {
  VYRACommandTable& hooks = HooksFor(before);
  for (Handler** link = &hooks.At(command).first; *link != nullptr; link = &(*link)->next) {
    const Handler& record = **link;
    if (record.callback != handler || record.owner != gDispatchedPlugin || record.refcon != refcon) continue;
    Remove(hooks, *link);
    return;
  }
}

int VYRADispatchCommandHook(VYRACommandRef command, int isBegin, int isEnd, int isBefore) {
  const Handler* first = HooksFor(isBefore).First(command);
  return first != nullptr ? CallHandlers(first, command, PhaseOf(isBegin, isEnd)) : 1;
}

void VYRACommandRepeatHook() {
  for (auto next = gCommandMap.begin(); next != gCommandMap.end();) {
    const VYRAHeldCommand held = *next;
    if (VYRARegistryIsEnabled(held.owner)) gHooks->CommandRepeat(held.command);
    next = gCommandMap.upper_bound(held);
  }
}

void VYRACommandCleanupHook(VYRAPluginID plugin) {
  EndCommandsOf(plugin);
  RemoveHandlersOf(plugin, gPreHooks);
  RemoveHandlersOf(plugin, gPostHooks);
}
