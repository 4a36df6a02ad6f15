#include <fmt/core.h>

#include "flight/expectations/Expectations.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const ScreenSearch search = ReadScreenSearch(entry, "screenShows");
  return {.text = fmt::format("screen shows {}", search.Text()), .check = [search] {
            return Finding{search.Succeeds(), search.Found()};
          }};
}

}  // namespace

ExpectationWord ScreenShowsExpectation() {
  return {{.key = TextKey("screenShows",
                          "a text or number that shows in this frame has the text in it; what lies off the "
                          "screen or under a window does not show"),
           .others = {InsideKey()}},
          Read};
}

}  // namespace sim
