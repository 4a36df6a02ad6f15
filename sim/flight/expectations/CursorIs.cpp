#include <fmt/core.h>
#include <limits>

#include "flight/expectations/Expectations.h"
#include "host/FrameDrawing.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const int wanted = entry.WholeNumber("cursor");
  return {.text = fmt::format("cursor is {}", wanted), .check = [wanted]() -> Finding {
            return {CursorOfFrame() == wanted, std::to_string(CursorOfFrame())};
          }};
}

}  // namespace

ExpectationWord CursorIsExpectation() {
  return {
      {.key = WholeNumberKey("cursor", 0, std::numeric_limits<int>::max(),
                             "a window wants the cursor of this number where the mouse is; 0 when none does"),
       .others = {}},
      Read};
}

}  // namespace sim
