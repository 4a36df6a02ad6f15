// The handlers of all commands on one side of the host's own handling, found by command. The host looks here
// in every phase of every command, mostly for commands that few or no plugins handle.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <tuple>

#include "VYRAKeyedRecords.h"
#include "VYRAOwnedRecords.h"
#include "VYRARecordPool.h"
#include "VYRAUtilities.h"

struct VYRACommandCB_t : VYRAPooled_t<VYRACommandCB_t> {
  VYRACommandHandler_f callback = nullptr;  // null once it was removed
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  void* refcon = nullptr;
  std::uint64_t serial = 0;                // rises with each registration
  VYRALinks<VYRACommandCB_t> ofCommand{};  // the next one to be called stays known after the removal
  VYRACommandRef command = nullptr;
  VYRALinks<VYRACommandCB_t> alike{};
  VYRALinks<VYRACommandCB_t> owned{};

  // What a registration is known by.
  auto Registration() const { return std::tuple(command, callback, owner, refcon); }
};

class VYRACommandTable {
 public:
  using Handler = VYRACommandCB_t;

  // The handler of a command that is called first, or null.
  Handler* First(VYRACommandRef command) { return byCommand.First(command); }

  // The first of the handlers with a registration that would be called, or null.
  Handler* FirstLike(const decltype(Handler().Registration())& registration) {
    return byRegistration.First(registration);
  }

  // The first of a plugin's handlers, of whichever command, or null.
  Handler* FirstOf(VYRAPluginID plugin) const { return owned.First(plugin); }

  // Adds a handler in front of those of its command, or behind them. It belongs to the table from here on.
  void AddFirst(Handler* handler);
  void AddLast(Handler* handler);

  // Takes a handler of the table out, and with the last one its command.
  std::unique_ptr<Handler> Take(Handler* handler);

  // How many commands have handlers.
  std::size_t Count() const { return byCommand.Count(); }

 private:
  VYRAKeyedRecords<Handler, &Handler::command, &Handler::ofCommand> byCommand;
  VYRAKeyedRecords<Handler, &Handler::Registration, &Handler::alike> byRegistration;
  VYRAOwnedRecords<Handler, &Handler::owned> owned;
};
