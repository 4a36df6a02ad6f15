// The keyboard of the window: plugins first, then the keys of the simulator and of the panels.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string_view>

#include "host/Keyboard.h"

union SDL_Event;
struct SDL_KeyboardEvent;

namespace sim {

class KeyInput {
 public:
  // Called with a key that is pressed with control and that no plugin took: a digit.
  explicit KeyInput(std::function<void(int digit)> whenDigitIsLeft) : onDigit(std::move(whenDigitIsLeft)) {}

  // An event of the keyboard, and whether the panels keep it: then plugins hear nothing of it, but of the
  // release of a key that they were told of.
  void Take(const SDL_Event& event, bool isPanels);
  // No more events for now: a key whose text did not come types none.
  void Settle();
  // The window is no longer where keys go.
  void ReleaseAll();

 private:
  struct Press {
    const NamedKey* key;
    int flags;
    int characterWithoutText;
  };
  struct Held {
    const NamedKey* key;
    int character;
  };

  void Begin(const SDL_KeyboardEvent& event);
  void End(const SDL_KeyboardEvent& event);
  void Tell(const Press& press, int character);

  std::function<void(int)> onDigit;
  std::optional<Press> pending;  // what it types is in the next event
  std::map<int, Held> held;      // by virtual key
};

}  // namespace sim
