// Three words for who took what the user did last.
#include <fmt/core.h>

#include "flight/expectations/Expectations.h"
#include "host/UserInput.h"

namespace sim {
namespace {

struct Click {
  static constexpr const char* kWord = "clickTakenBy";
  static constexpr std::string_view kThing = "last click";
  static const std::string& Taker() { return gLastTakers.click; }
};
struct KeyPress {
  static constexpr const char* kWord = "keyTakenBy";
  static constexpr std::string_view kThing = "last key";
  static const std::string& Taker() { return gLastTakers.key; }
};
struct Wheel {
  static constexpr const char* kWord = "wheelTakenBy";
  static constexpr std::string_view kThing = "last turn of the wheel";
  static const std::string& Taker() { return gLastTakers.wheel; }
};

template <class Input>
Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string wanted = entry.Text(Input::kWord);
  return {.text = fmt::format("{} was taken by {}", Input::kThing, wanted), .check = [wanted]() -> Finding {
            return {Input::Taker() == wanted, Input::Taker().empty() ? "nothing was done" : Input::Taker()};
          }};
}

template <class Input>
ExpectationWord WordOf(std::string_view description) {
  return {{.key = TextKey(Input::kWord, description), .others = {}}, Read<Input>};
}

}  // namespace

ExpectationWord ClickTakenByExpectation() {
  return WordOf<Click>(
      "the mouse's last press was taken by a window of the plugin with this signature, or left to the "
      "`simulator`");
}

ExpectationWord KeyTakenByExpectation() {
  return WordOf<KeyPress>("likewise the last key, by a sniffer, a hot key or a window");
}

ExpectationWord WheelTakenByExpectation() { return WordOf<Wheel>("likewise the last turn of the wheel"); }

}  // namespace sim
