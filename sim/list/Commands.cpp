#include "host/CommandServices.h"
#include "host/Inventory.h"
#include "host/PluginList.h"
#include "list/List.h"

namespace sim {
namespace {

// The plugins whose handlers they are, in the order in which they are called.
Rows HandlersOf(VYRACommandRef command) {
  Rows handlers = Rows::array();
  for (const VYRACommandHandlerInfo& handler : CommandHandlers(command))
    handlers.push_back(OwnerOf(handler.plugin));
  return handlers;
}

}  // namespace

Rows ListedCommands() {
  Rows rows = Rows::array();
  for (const CommandInfo& command : ListCommands())
    rows.push_back({{"name", command.name},
                    {"owner", OwnerOfPath(command.ownerPath)},
                    {"handlers", HandlersOf(command.command)},
                    {"description", command.description}});
  return rows;
}

}  // namespace sim
