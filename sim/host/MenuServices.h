// The menu bar: menus and items as the library asks for them, and the user who picks one.
#pragma once

#include <string>

#include "VYRAHost.h"

namespace sim {

void FillMenuServices(VYRAHostServices& services);

// Picks an item by its way through the menus, "Plugins/Clock/Show window". The result is empty, or says why
// it could not be picked.
std::string PickMenuItem(const std::string& way);

// "absent", "disabled", "checked", "unchecked" or, for an item without a place for a mark, "plain".
std::string MenuItemState(const std::string& way);

}  // namespace sim
