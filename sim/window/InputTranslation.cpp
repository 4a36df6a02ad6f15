#include "window/InputTranslation.h"

#include <SDL.h>

#include <algorithm>
#include <map>
#include <string>

#include "flight/Entry.h"
#include "view/Screen.h"

namespace sim {
namespace {

std::map<SDL_Keycode, const char*> MakeNames() {
  std::map<SDL_Keycode, const char*> names{
      {SDLK_BACKSPACE, "Backspace"},
      {SDLK_TAB, "Tab"},
      {SDLK_CLEAR, "Clear"},
      {SDLK_RETURN, "Return"},
      {SDLK_RETURN2, "Enter"},
      {SDLK_ESCAPE, "Escape"},
      {SDLK_SPACE, "Space"},
      {SDLK_PAGEUP, "Page Up"},
      {SDLK_PAGEDOWN, "Page Down"},
      {SDLK_END, "End"},
      {SDLK_HOME, "Home"},
      {SDLK_LEFT, "Left"},
      {SDLK_UP, "Up"},
      {SDLK_RIGHT, "Right"},
      {SDLK_DOWN, "Down"},
      {SDLK_SELECT, "Select"},
      {SDLK_EXECUTE, "Execute"},
      {SDLK_PRINTSCREEN, "Snapshot"},
      {SDLK_INSERT, "Insert"},
      {SDLK_DELETE, "Delete"},
      {SDLK_HELP, "Help"},
      {SDLK_KP_0, "Numpad-0"},
      {SDLK_KP_1, "Numpad-1"},
      {SDLK_KP_2, "Numpad-2"},
      {SDLK_KP_3, "Numpad-3"},
      {SDLK_KP_4, "Numpad-4"},
      {SDLK_KP_5, "Numpad-5"},
      {SDLK_KP_6, "Numpad-6"},
      {SDLK_KP_7, "Numpad-7"},
      {SDLK_KP_8, "Numpad-8"},
      {SDLK_KP_9, "Numpad-9"},
      {SDLK_KP_MULTIPLY, "Numpad-*"},
      {SDLK_KP_PLUS, "Numpad-+"},
      {SDLK_KP_MINUS, "Numpad--"},
      {SDLK_KP_PERIOD, "Numpad-."},
      {SDLK_KP_COMMA, "Numpad-."},
      {SDLK_KP_DIVIDE, "Numpad-/"},
      {SDLK_KP_ENTER, "Numpad-Enter"},
      {SDLK_KP_EQUALS, "Numpad-="},
      {SDLK_F1, "F1"},
      {SDLK_F2, "F2"},
      {SDLK_F3, "F3"},
      {SDLK_F4, "F4"},
      {SDLK_F5, "F5"},
      {SDLK_F6, "F6"},
      {SDLK_F7, "F7"},
      {SDLK_F8, "F8"},
      {SDLK_F9, "F9"},
      {SDLK_F10, "F10"},
      {SDLK_F11, "F11"},
      {SDLK_F12, "F12"},
      {SDLK_F13, "F13"},
      {SDLK_F14, "F14"},
      {SDLK_F15, "F15"},
      {SDLK_F16, "F16"},
      {SDLK_F17, "F17"},
      {SDLK_F18, "F18"},
      {SDLK_F19, "F19"},
      {SDLK_F20, "F20"},
      {SDLK_F21, "F21"},
      {SDLK_F22, "F22"},
      {SDLK_F23, "F23"},
      {SDLK_F24, "F24"},
  };
  return names;
}

const NamedKey* FindByCode(SDL_Keycode code) {
  static const std::map<SDL_Keycode, const char*> kNames = MakeNames();
  if (const auto named = kNames.find(code); named != kNames.end()) return FindKey(named->second);
  constexpr SDL_Keycode kFirstSign = 0x21;  // of ASCII, whose codes are the characters
  constexpr SDL_Keycode kLastSign = 0x7E;
  if (code < kFirstSign || code > kLastSign) return nullptr;
  return FindKey(std::string(1, static_cast<char>(code)));
}

SDL_Keycode CodeOnUsKeyboard(SDL_Scancode place) {
  static const std::map<SDL_Scancode, SDL_Keycode> kSigns{
      {SDL_SCANCODE_MINUS, '-'},          {SDL_SCANCODE_EQUALS, '='},      {SDL_SCANCODE_LEFTBRACKET, '['},
      {SDL_SCANCODE_RIGHTBRACKET, ']'},   {SDL_SCANCODE_BACKSLASH, '\\'},  {SDL_SCANCODE_NONUSHASH, '\\'},
      {SDL_SCANCODE_SEMICOLON, ';'},      {SDL_SCANCODE_APOSTROPHE, '\''}, {SDL_SCANCODE_GRAVE, '`'},
      {SDL_SCANCODE_COMMA, ','},          {SDL_SCANCODE_PERIOD, '.'},      {SDL_SCANCODE_SLASH, '/'},
      {SDL_SCANCODE_NONUSBACKSLASH, '\\'}};
  if (place >= SDL_SCANCODE_A && place <= SDL_SCANCODE_Z) return 'a' + (place - SDL_SCANCODE_A);
  if (place >= SDL_SCANCODE_1 && place <= SDL_SCANCODE_9) return '1' + (place - SDL_SCANCODE_1);
  if (place == SDL_SCANCODE_0) return '0';
  const auto sign = kSigns.find(place);
  return sign != kSigns.end() ? sign->second : SDLK_UNKNOWN;
}

}  // namespace

const NamedKey* KeyOf(const SDL_Keysym& keysym) {
  if (const NamedKey* const key = FindByCode(keysym.sym)) return key;
  return FindByCode(CodeOnUsKeyboard(keysym.scancode));
}

int FlagsOf(const SDL_Keysym& keysym) {
  return ((keysym.mod & KMOD_SHIFT) != 0 ? kShift : 0) | ((keysym.mod & KMOD_CTRL) != 0 ? kControl : 0) |
         ((keysym.mod & KMOD_ALT) != 0 ? kAlt : 0);
}

int CharacterOf(std::string_view text) {
  if (text.empty()) return 0;
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x80) return first;
  if (text.size() < 2 || (first != 0xC2 && first != 0xC3)) return 0;
  return ((first & 0x03) << 6) | (static_cast<unsigned char>(text[1]) & 0x3F);
}

int CharacterWithoutText(const NamedKey& key, const SDL_Keysym& keysym) {
  const int flags = FlagsOf(keysym);
  const bool isControl = key.character < ' ' || key.character == '\x7F';
  if (!isControl && (flags & (kControl | kAlt)) == 0) return 0;
  return TypedCharacter(key, flags);
}

nlohmann::json KeyStep(const char* word, const NamedKey& key, int flags, int character) {
  nlohmann::json step{{word, key.name}};
  for (const std::string_view name : ModifierNames())
    if ((flags & ModifierFlags({std::string(name)})) != 0) step["modifiers"].push_back(name);
  if (character != TypedCharacter(key, flags)) step["character"] = character;
  return step;
}

Pixel PlaceOnScreen(int x, int y) {
  return {std::clamp(x, 0, gScreen.Width() - 1),
          std::clamp(gScreen.Height() - 1 - y, 0, gScreen.Height() - 1)};
}

}  // namespace sim
