#include <fmt/format.h>

#include "flight/expectations/Expectations.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string text = entry.Text("screenLacks");
  return {.text = fmt::format("screen does not show \"{}\"", text), .check = [text] {
            return Finding{ScreenHas(text) == false, TextsOnScreen()};
          }};
}

}  // namespace

ExpectationWord ScreenLacksExpectation() {
  return {
      {.key = TextKey("screenLacks", "no text or number that was drawn in this frame has it"), .others = {}},
      Read};
}

}  // namespace sim
