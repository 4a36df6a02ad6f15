#include "host/MenuServices.h"
#include "host/PluginList.h"
#include "list/List.h"

namespace sim {

Rows ListedMenus() {
  Rows rows = Rows::array();
  for (const MenuItemInfo& item : ListMenuItems())
    rows.push_back({{"state", item.state}, {"owner", OwnerOfPath(item.ownerPath)}, {"item", item.way}});
  return rows;
}

}  // namespace sim
