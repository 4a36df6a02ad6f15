#include "host/Inventory.h"
#include "host/PluginList.h"
#include "list/List.h"

namespace sim {

Rows ListedWindows() {
  Rows rows = Rows::array();
  for (int place = 1; const VYRAWindowInfo& window : PluginWindows())
    rows.push_back({{"place", place++},  // from the front
                    {"left", window.left},
                    {"top", window.top},
                    {"right", window.right},
                    {"bottom", window.bottom},
                    {"shown", window.isShown != 0},
                    {"keyboardFocus", window.hasKeyboardFocus != 0},
                    {"owner", OwnerOf(window.plugin)}});
  return rows;
}

}  // namespace sim
