#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <limits>

#include "flight/expectations/Expectations.h"
#include "host/GraphicsServices.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const int texture = entry.WholeNumber("textureBound");
  return {.text = fmt::format("texture {} was bound in the frame", texture), .check = [texture]() -> Finding {
            const std::vector<int>& bound = TexturesBoundInFrame();
            return {std::ranges::find(bound, texture) != bound.end(),
                    bound.empty() ? "none" : fmt::format("{}", fmt::join(bound, ", "))};
          }};
}

}  // namespace

ExpectationWord TextureBoundExpectation() {
  return {{.key = WholeNumberKey("textureBound", 0, std::numeric_limits<int>::max(),
                                 "the texture of this number was bound in the drawing of this frame"),
           .others = {}},
          Read};
}

}  // namespace sim
