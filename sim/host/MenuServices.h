// The menu bar: menus and items as the library asks for them, and the user who picks one.
#pragma once

#include <string>
#include <vector>

#include "VYRAHost.h"

namespace sim {

void FillMenuServices(VYRAHostServices& services);

// Picks an item by its way through the menus, as "Plugins", "Clock", "Show window"; and, where several have
// the same way, by its number among them, 1 being the first. The result is empty, or says why it could not be
// picked.
std::string PickMenuItem(const std::vector<std::string>& way, int number = 1);

inline constexpr int kMenuBar = 0;
inline constexpr int kNoMenu = -1;

// A line of a menu as it is now.
struct MenuLine {
  std::string name;
  int subMenu;  // or kNoMenu
  bool isEnabled;
  bool isChecked;
};
std::vector<MenuLine> MenuLines(int menu);

// Of the item at a position of a menu, which has this way: its number for PickMenuItem.
int NumberOfMenuItem(const std::vector<std::string>& way, int menu, int position);

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
