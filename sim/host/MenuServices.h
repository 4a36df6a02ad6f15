// The menu bar: menus and items as the library asks for them, and the user who picks one.
#pragma once

#include <string>
#include <vector>

#include "VYRAHost.h"

namespace sim {

void FillMenuServices(VYRAHostServices& services);

// Picks an item by its way through the menus, as "Plugins", "Clock", "Show window". The result is empty, or
// says why it could not be picked.
std::string PickMenuItem(const std::vector<std::string>& way);

// All items that can be seen, each after the one whose menu it is in.
struct MenuItemInfo {
  std::vector<std::string> way;  // the names from the bar on
  std::string state;             // as of MenuItemState
  std::string ownerPath;         // of the module that appended it; empty for the simulator
};
std::vector<MenuItemInfo> ListMenuItems();

// "absent", "disabled", "checked", "unchecked" or, for an item without a place for a mark, "plain".
std::string MenuItemState(const std::vector<std::string>& way);

}  // namespace sim
