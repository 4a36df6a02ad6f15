// Three words for a key: pressed and released, or each apart.
#include <fmt/core.h>

#include "flight/NamedKeys.h"
#include "flight/steps/Steps.h"
#include "host/UserInput.h"

namespace sim {
namespace {

constexpr std::string_view kCharacter = "character";

struct Type {
  static constexpr const char* kWord = "key";
  static Outcome Act(const NamedKey& key, int flags, int character) {
    const std::string taker = PressKey(key, flags, character);
    ReleaseKey(key, flags, character);
    return {true, fmt::format("key {}: {}", KeyText(key, flags), TakenBy(taker))};
  }
};
struct Press {
  static constexpr const char* kWord = "pressKey";
  static Outcome Act(const NamedKey& key, int flags, int character) {
    return {true,
            fmt::format("key {} pressed: {}", KeyText(key, flags), TakenBy(PressKey(key, flags, character)))};
  }
};
struct Release {
  static constexpr const char* kWord = "releaseKey";
  static Outcome Act(const NamedKey& key, int flags, int character) {
    ReleaseKey(key, flags, character);
    return {true, fmt::format("key {} released", KeyText(key, flags))};
  }
};

template <class Deed>
Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const NamedKey& key = NamedKeyOf(entry, Deed::kWord);
  const int flags = ModifierFlags(entry.Texts("modifiers"));
  const int character = entry.Has(kCharacter) ? entry.WholeNumber(kCharacter) : TypedCharacter(key, flags);
  return [&key, flags, character] { return Deed::Act(key, flags, character); };
}

template <class Deed>
StepWord WordOf(std::string_view description) {
  return {{.key = TextKey(Deed::kWord, description),
           .others = {Optional(TextsKey("modifiers", "keys that are held with it", ModifierNames())),
                      Optional(WholeNumberKey(kCharacter, 0, 255,
                                              "what it types: a character's number in Latin-1, 0 for "
                                              "nothing; without it, what the key's name says"))}},
          Read<Deed>};
}

}  // namespace

StepWord TypeKeyStep() {
  return WordOf<Type>(
      "presses and releases the key of this name, whatever its case: `A` to `Z`, `0` to `9`, `F1` to `F24`, "
      "`Space`, `Return`, `Escape`, `Page Up`, `Numpad-7` and so on, as sim/README.md lists them");
}

StepWord PressKeyStep() {
  return WordOf<Press>("presses a key, and leaves it so; again, as a key does that is held for long");
}

StepWord ReleaseKeyStep() { return WordOf<Release>("releases a key; plugins see its flag 8"); }

}  // namespace sim
