#include "host/HotKeys.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/FlightBoard.h"
#include "host/PluginList.h"

namespace sim {
namespace {

HotKeyInfo InfoOf(VYRAHotKeyID hotKey) {
  char virtualKey = 0;
  int flags = 0;
  char description[VYRA_HOT_KEY_DESCRIPTION_SIZE] = "";
  VYRAPluginID plugin = VYRA_NO_PLUGIN;
  VYRAGetHotKeyInfo(hotKey, &virtualKey, &flags, description, &plugin);
  return {hotKey, plugin, description, static_cast<unsigned char>(virtualKey), flags};
}

}  // namespace

std::vector<HotKeyInfo> ListHotKeys() {
  const int count = VYRACountHotKeys();
  std::vector<HotKeyInfo> list;
  list.reserve(static_cast<std::size_t>(count));
  for (int index = 0; index < count; ++index) list.push_back(InfoOf(VYRAGetNthHotKey(index)));
  return list;
}

HotKeyName NameOf(const HotKeyInfo& hotKey) {
  HotKeyName name{.signature = OwnerOf(hotKey.plugin), .description = hotKey.description, .number = 0};
  for (const HotKeyInfo& other : ListHotKeys()) {
    if (other.plugin == hotKey.plugin && other.description == hotKey.description) ++name.number;
    if (other.hotKey == hotKey.hotKey) break;
  }
  return name;
}

std::string BindHotKey(const HotKeyName& name, const NamedKey& key, int flags) {
  int number = 0;
  for (const HotKeyInfo& hotKey : ListHotKeys()) {
    if (OwnerOf(hotKey.plugin) != name.signature || hotKey.description != name.description) continue;
    if (++number != name.number) continue;
    CallHook("VYRASetHotKeyCombination", VYRASetHotKeyCombination, hotKey.hotKey,
             static_cast<char>(key.virtualKey), flags);
    return "";
  }
  return "there is no such hot key";
}

std::string CombinationText(int virtualKey, int flags) {
  const std::vector<NamedKey>& keys = NamedKeys();
  const auto found = std::ranges::find(keys, virtualKey, &NamedKey::virtualKey);
  if (found != keys.end()) return KeyText(*found, flags);
  return KeyText({.virtualKey = virtualKey, .name = fmt::format("key {}", virtualKey), .character = 0},
                 flags);
}

}  // namespace sim
