#include <fmt/format.h>

#include "flight/expectations/Expectations.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string text = entry.Text("screenShows");
  return {.text = fmt::format("screen shows \"{}\"", text), .check = [text] {
            return Finding{ScreenHas(text) == true, TextsOnScreen()};
          }};
}

}  // namespace

ExpectationWord ScreenShowsExpectation() {
  return {{.key = TextKey("screenShows", "a text or number that was drawn in this frame has the text in it"),
           .others = {}},
          Read};
}

}  // namespace sim
