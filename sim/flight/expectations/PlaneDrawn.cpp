#include <fmt/core.h>

#include <algorithm>

#include "flight/expectations/Expectations.h"
#include "host/PlaneServices.h"
#include "view/DrawnScene.h"
#include "world/World.h"

namespace sim {
namespace {

std::string DrawnBy(int plane) {
  const auto drawn = std::ranges::find(gDrawnScene.planes, plane, &DrawnPlane::plane);
  if (drawn == gDrawnScene.planes.end()) return "nobody";
  return drawn->isByPlugin ? "plugin" : "simulator";
}

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const int plane = entry.WholeNumber("planeDrawn");
  const std::string wanted = entry.Text("by");
  return {.text = fmt::format("plane {} is drawn by {}", plane, wanted), .check = [=]() -> Finding {
            const std::string found = DrawnBy(plane);
            return {found == wanted, found};
          }};
}

}  // namespace

ExpectationWord PlaneDrawnExpectation() {
  return {{.key = WholeNumberKey("planeDrawn", 0, World::kAiPlanes,
                                 "this plane, 0 being the user's, was drawn in the frame"),
           .others = {ChoiceKey("by", {"plugin", "simulator", "nobody"}, "that is who drew it")}},
          Read};
}

}  // namespace sim
