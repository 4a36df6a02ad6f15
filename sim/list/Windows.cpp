#include "VYRAWatch.h"
#include "host/PluginList.h"
#include "list/List.h"

namespace sim {

Rows ListedWindows() {
  std::vector<VYRAWindowInfo> infos(static_cast<std::size_t>(VYRAGetWindows(nullptr, 0)));
  VYRAGetWindows(infos.data(), static_cast<int>(infos.size()));
  Rows rows = Rows::array();
  for (int place = 1; const VYRAWindowInfo& window : infos)
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
