#include <fmt/core.h>
#include <limits>

#include "VYRAPlugin.h"
#include "flight/expectations/Expectations.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const int wanted = entry.WholeNumber("pluginCount");
  return CountClaim(fmt::format("there are {} plugins", wanted), wanted, VYRACountPlugins);
}

}  // namespace

ExpectationWord PluginCountExpectation() {
  return {{.key = WholeNumberKey("pluginCount", 0, std::numeric_limits<int>::max(),
                                 "the registry has so many records, the simulator's included"),
           .others = {}},
          Read};
}

}  // namespace sim
