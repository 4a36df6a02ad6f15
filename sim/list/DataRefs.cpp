// Units and descriptions are known of the simulator's own alone.
#include "host/DataRefValue.h"
#include "host/Inventory.h"
#include "host/PluginList.h"
#include "list/List.h"

namespace sim {
namespace {

// Whole numbers as such.
Rows ToRow(const DataRefValue& value, bool isWhole) {
  if (const auto* const number = std::get_if<double>(&value))
    return isWhole ? Rows(static_cast<int>(*number)) : Rows(*number);
  if (const auto* const numbers = std::get_if<std::vector<double>>(&value))
    return isWhole ? Rows(std::vector<int>(numbers->begin(), numbers->end())) : Rows(*numbers);
  return std::get<std::string>(value);
}

Rows ValueOf(const VYRADataRefInfo& dataRef) {
  const bool isWhole = (dataRef.types & ~(VYRA_TYPE_INT | VYRA_TYPE_INT_ARRAY)) == 0;
  const std::optional<DataRefValue> value = ReadDataRef(dataRef.name);
  return value ? ToRow(*value, isWhole) : Rows();
}

}  // namespace

Rows ListedDataRefs() {
  Rows rows = Rows::array();
  for (const VYRADataRefInfo& dataRef : PublishedDataRefs()) {
    const DataRefRow* const own = OwnDataRefRow(dataRef);
    rows.push_back({{"name", dataRef.name},
                    {"type", TypeNames(dataRef.types)},
                    {"unit", own != nullptr ? own->unit : ""},
                    {"writable", dataRef.isWritable != 0},
                    {"owner", OwnerOf(dataRef.owner)},
                    {"value", ValueOf(dataRef)},
                    {"description", own != nullptr ? own->description : ""}});
  }
  return rows;
}

}  // namespace sim
