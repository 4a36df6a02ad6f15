// The keys of the keyboard by name, and the modifiers, as the simulator tells plugins of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sim {

// The bits of a keystroke's flags. A press has only those of the keys that are held with it.
enum KeyFlag { kShift = 1, kControl = 2, kAlt = 4, kReleased = 8 };

struct NamedKey {
  int virtualKey;
  std::string name;  // the library's: "A", "F4", "Page Up", "Numpad-7"
  char character;    // what it types without shift, 0 for nothing
};

// All keys that have a name, in the order of their virtual keys.
const std::vector<NamedKey>& NamedKeys();

// Null when there is none of this name, whatever its case.
const NamedKey* FindKey(std::string_view name);

// Of a key with these flags: shift makes letters capital.
int TypedCharacter(const NamedKey& key, int flags);

// "shift", "control" and "alt", and the flags that some of them make.
const std::vector<std::string_view>& ModifierNames();
int ModifierFlags(const std::vector<std::string>& names);

// "control+F4".
std::string KeyText(const NamedKey& key, int flags);

}  // namespace sim
