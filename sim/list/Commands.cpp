#include "VYRAWatch.h"
#include "host/CommandServices.h"
#include "host/PluginList.h"
#include "list/List.h"

namespace sim {
namespace {

// The plugins whose handlers they are, in the order in which they are called.
Rows HandlersOf(VYRACommandRef command) {
  std::vector<VYRACommandHandlerInfo> infos(
      static_cast<std::size_t>(VYRAGetCommandHandlers(command, nullptr, 0)));
  VYRAGetCommandHandlers(command, infos.data(), static_cast<int>(infos.size()));
  Rows handlers = Rows::array();
  for (const VYRACommandHandlerInfo& handler : infos) handlers.push_back(OwnerOf(handler.plugin));
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
