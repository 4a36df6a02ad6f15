// Plugins' hot keys, and the simulator's own bindings, which get the keys that no plugin takes.
#include "VYRAUtilities.h"
#include "host/HotKeys.h"
#include "host/InputServices.h"
#include "host/PluginList.h"
#include "list/List.h"

namespace sim {

Rows ListedKeys() {
  Rows rows = Rows::array();
  for (const HotKeyInfo& hotKey : ListHotKeys())
    rows.push_back({{"key", VYRAGetVirtualKeyDescription(static_cast<char>(hotKey.virtualKey))},
                    {"virtualKey", hotKey.virtualKey},
                    {"modifiers", hotKey.flags},
                    {"owner", OwnerOf(hotKey.plugin)},
                    {"description", hotKey.description}});
  for (const Binding& binding : KeyBindings())
    rows.push_back({{"key", binding.keyName},
                    {"virtualKey", binding.number},
                    {"modifiers", 0},
                    {"owner", OwnerOf(VYRA_HOST_PLUGIN)},
                    {"description", binding.command}});
  return rows;
}

}  // namespace sim
