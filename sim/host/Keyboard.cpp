#include "host/Keyboard.h"

#include <algorithm>
#include <cctype>
#include <map>

#include "VYRAUtilities.h"

namespace sim {
namespace {

constexpr int kVirtualKeys = 256;
constexpr std::string_view kNumpad = "Numpad-";

bool SameLetters(std::string_view left, std::string_view right) {
  return std::ranges::equal(
      left, right, [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

char CharacterOf(const std::string& name) {
  static const std::map<std::string, char, std::less<>> kNamed{
      {"Space", ' '},         {"Tab", '\t'},       {"Return", '\r'},   {"Enter", '\r'},
      {"Numpad-Enter", '\r'}, {"Backspace", '\b'}, {"Escape", '\x1B'}, {"Delete", '\x7F'}};
  if (const auto found = kNamed.find(name); found != kNamed.end()) return found->second;
  const bool isOnNumpad = name.size() == kNumpad.size() + 1 && name.starts_with(kNumpad);
  if (name.size() != 1 && !isOnNumpad) return '\0';
  return static_cast<char>(std::tolower(static_cast<unsigned char>(name.back())));
}

}  // namespace

const std::vector<NamedKey>& NamedKeys() {
  static const std::vector<NamedKey> kKeys = [] {
    std::vector<NamedKey> keys;
    const std::string unknown = VYRAGetVirtualKeyDescription(0);
    for (int virtualKey = 1; virtualKey < kVirtualKeys; ++virtualKey) {
      const std::string name = VYRAGetVirtualKeyDescription(static_cast<char>(virtualKey));
      if (name != unknown) keys.push_back({virtualKey, name, CharacterOf(name)});
    }
    return keys;
  }();
  return kKeys;
}

const NamedKey* FindKey(std::string_view name) {
  const auto found =
      std::ranges::find_if(NamedKeys(), [name](const NamedKey& key) { return SameLetters(key.name, name); });
  return found != NamedKeys().end() ? &*found : nullptr;
}

int TypedCharacter(const NamedKey& key, int flags) {
  const int character = static_cast<unsigned char>(key.character);
  return (flags & kShift) != 0 ? std::toupper(character) : character;
}

const std::vector<std::string_view>& ModifierNames() {
  static const std::vector<std::string_view> kNames{"shift", "control", "alt"};
  return kNames;
}

int ModifierFlags(const std::vector<std::string>& names) {
  int flags = 0;
  for (const std::string& name : names)
    flags |= name == "shift" ? kShift : name == "control" ? kControl : kAlt;
  return flags;
}

std::string KeyText(const NamedKey& key, int flags) {
  std::string text;
  for (const std::string_view name : ModifierNames())
    if ((flags & ModifierFlags({std::string(name)})) != 0) text += std::string(name) + "+";
  return text + key.name;
}

}  // namespace sim
