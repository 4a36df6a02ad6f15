#include "host/Inventory.h"

#include <algorithm>

#include "host/OwnDataRefs.h"

namespace sim {
namespace {

// Of a function that writes records, as far as there is room, and says how many there are.
template <class Record, class Function>
std::vector<Record> AllOf(const Function& write) {
  std::vector<Record> records(static_cast<std::size_t>(write(nullptr, 0)));
  write(records.data(), static_cast<int>(records.size()));
  return records;
}

}  // namespace

std::vector<VYRADataRefInfo> PublishedDataRefs() { return AllOf<VYRADataRefInfo>(VYRAGetDataRefs); }

const DataRefRow* OwnDataRefRow(const VYRADataRefInfo& dataRef) {
  if (dataRef.owner != VYRA_HOST_PLUGIN) return nullptr;
  const std::vector<DataRefRow>& rows = OwnDataRefs();
  const auto found = std::ranges::lower_bound(rows, dataRef.name, {}, &DataRefRow::name);
  return found != rows.end() && found->name == dataRef.name ? &*found : nullptr;
}

std::vector<VYRAWindowInfo> PluginWindows() { return AllOf<VYRAWindowInfo>(VYRAGetWindows); }

std::vector<VYRACommandHandlerInfo> CommandHandlers(VYRACommandRef command) {
  return AllOf<VYRACommandHandlerInfo>([command](VYRACommandHandlerInfo* handlers, int capacity) {
    return VYRAGetCommandHandlers(command, handlers, capacity);
  });
}

}  // namespace sim
