#include <fmt/core.h>
#include <limits>

#include "flight/expectations/Expectations.h"
#include "world/World.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const int wanted = entry.WholeNumber("objectsLoaded");
  return CountClaim(fmt::format("number of objects loaded is {}", wanted), wanted,
                    [] { return gWorld.objects.CountLoads(); });
}

}  // namespace

ExpectationWord ObjectsLoadedExpectation() {
  return {{.key = WholeNumberKey("objectsLoaded", 0, std::numeric_limits<int>::max(),
                                 "so many loads of objects were not released yet"),
           .others = {}},
          Read};
}

}  // namespace sim
