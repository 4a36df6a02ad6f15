// The hot keys of plugins, as a user knows them: by their plugin and what they do.
#pragma once

#include <string>
#include <vector>

#include "VYRADisplay.h"
#include "host/Keyboard.h"

namespace sim {

struct HotKeyInfo {
  VYRAHotKeyID hotKey;
  VYRAPluginID plugin;
  std::string description;
  int virtualKey;  // 0 to 255
  int flags;       // of KeyFlag
};

// The one that was registered last comes first.
std::vector<HotKeyInfo> ListHotKeys();

// Which hot key: of a plugin's hot keys with this description the one with this number, 1 being the one
// registered last.
struct HotKeyName {
  std::string signature;
  std::string description;
  int number = 1;
};
HotKeyName NameOf(const HotKeyInfo& hotKey);

// Binds it to another key with exactly these modifiers. The result is empty, or says why nothing was bound.
std::string BindHotKey(const HotKeyName& name, const NamedKey& key, int flags);

// "control+F4"; the number of a key that has no name.
std::string CombinationText(int virtualKey, int flags);

}  // namespace sim
