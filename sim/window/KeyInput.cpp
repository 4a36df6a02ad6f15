#include "window/KeyInput.h"

#include <SDL.h>

#include "host/UserInput.h"
#include "window/InputTranslation.h"
#include "window/UserActions.h"

namespace sim {

void KeyInput::Take(const SDL_Event& event, bool isPanels) {
  if (event.type == SDL_TEXTINPUT) {
    if (pending) Tell(*pending, CharacterOf(event.text.text));
    pending.reset();
    return;
  }
  Settle();
  if (event.type == SDL_KEYDOWN && !isPanels) Begin(event.key);
  if (event.type == SDL_KEYUP) End(event.key);
}

void KeyInput::Settle() {
  if (pending) Tell(*pending, pending->characterWithoutText);
  pending.reset();
}

void KeyInput::ReleaseAll() {
  pending.reset();
  for (const auto& [virtualKey, one] : held) Do(KeyStep("releaseKey", *one.key, 0, one.character));
  held.clear();
}

void KeyInput::Begin(const SDL_KeyboardEvent& event) {
  const NamedKey* const key = KeyOf(event.keysym);
  if (key == nullptr) return;
  pending = Press{key, FlagsOf(event.keysym), CharacterWithoutText(*key, event.keysym)};
}

// With the character that it was pressed with, whatever is held meanwhile.
void KeyInput::End(const SDL_KeyboardEvent& event) {
  const NamedKey* const key = KeyOf(event.keysym);
  if (key == nullptr) return;
  const auto found = held.find(key->virtualKey);
  if (found == held.end()) return;
  Do(KeyStep("releaseKey", *key, FlagsOf(event.keysym), found->second.character));
  held.erase(found);
}

void KeyInput::Tell(const Press& press, int character) {
  held[press.key->virtualKey] = {press.key, character};
  Do(KeyStep("pressKey", *press.key, press.flags, character), [this, press](const Outcome&) {
    const bool isDigit = press.key->virtualKey >= '0' && press.key->virtualKey <= '9';
    if (isDigit && press.flags == kControl && gLastTakers.key == kSimulatorTook)
      onDigit(press.key->virtualKey - '0');
  });
}

}  // namespace sim
