// Plugins' hot keys, and the simulator's own bindings, which get the keys that no plugin takes.
#include "VYRADisplay.h"
#include "VYRAUtilities.h"
#include "host/InputServices.h"
#include "host/PluginList.h"
#include "list/List.h"

namespace sim {
namespace {

Rows HotKey(VYRAHotKeyID hotKey) {
  char virtualKey = 0;
  int flags = 0;
  char description[VYRA_HOT_KEY_DESCRIPTION_SIZE] = "";
  VYRAPluginID plugin = VYRA_NO_PLUGIN;
  VYRAGetHotKeyInfo(hotKey, &virtualKey, &flags, description, &plugin);
  return {{"key", VYRAGetVirtualKeyDescription(virtualKey)},
          {"virtualKey", static_cast<unsigned char>(virtualKey)},
          {"modifiers", flags},
          {"owner", OwnerOf(plugin)},
          {"description", description}};
}

}  // namespace

Rows ListedKeys() {
  Rows rows = Rows::array();
  for (int index = 0; index < VYRACountHotKeys(); ++index) rows.push_back(HotKey(VYRAGetNthHotKey(index)));
  for (const Binding& binding : KeyBindings())
    rows.push_back({{"key", binding.keyName},
                    {"virtualKey", binding.number},
                    {"modifiers", 0},
                    {"owner", OwnerOf(VYRA_HOST_PLUGIN)},
                    {"description", binding.command}});
  return rows;
}

}  // namespace sim
