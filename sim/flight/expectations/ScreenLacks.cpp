#include <fmt/core.h>

#include "flight/expectations/Expectations.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const ScreenSearch search = ReadScreenSearch(entry, "screenLacks");
  return {.text = fmt::format("screen does not show {}", search.Text()), .check = [search] {
            return Finding{!search.Succeeds(), search.Found()};
          }};
}

}  // namespace

ExpectationWord ScreenLacksExpectation() {
  return {{.key = TextKey("screenLacks", "no text or number that shows in this frame has it"),
           .others = {InsideKey()}},
          Read};
}

}  // namespace sim
