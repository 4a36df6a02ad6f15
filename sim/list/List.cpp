#include "list/List.h"

namespace sim {

const std::vector<List>& Lists() {
  static const std::vector<List> kLists = {
      {"plugins", ListedPlugins}, {"datarefs", ListedDataRefs}, {"commands", ListedCommands},
      {"menus", ListedMenus},     {"windows", ListedWindows},   {"keys", ListedKeys},
  };
  return kLists;
}

}  // namespace sim
