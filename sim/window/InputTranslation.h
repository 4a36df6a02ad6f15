// Keys and places as SDL tells of them, in the words of plugins and flight files.
#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

#include "host/Keyboard.h"

struct SDL_Keysym;

namespace sim {

// The key as the user's layout names it; one that types nothing of ASCII goes by its place on a keyboard of
// the USA. Null for keys that have no name: shift, the media keys.
const NamedKey* KeyOf(const SDL_Keysym& keysym);

// The flags of the keys that are held with it.
int FlagsOf(const SDL_Keysym& keysym);

// The first character of a UTF-8 text as plugins get it, a byte of Latin-1; 0 for all others.
int CharacterOf(std::string_view text);

// What a key types when no text came of it: Return and its like have a character, letters and digits do
// with control or alt, and a keypad that is switched to arrows has none.
int CharacterWithoutText(const NamedKey& key, const SDL_Keysym& keysym);

// {"pressKey": "A", "modifiers": ["shift"], "character": 65}, without what says nothing.
nlohmann::json KeyStep(const char* word, const NamedKey& key, int flags, int character);

// A place in the window is one of the screen, with y upward; outside of it the nearest one.
struct Pixel;
Pixel PlaceOnScreen(int x, int y);

}  // namespace sim
