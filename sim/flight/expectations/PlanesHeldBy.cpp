#include <fmt/core.h>

#include "flight/expectations/Expectations.h"
#include "host/PlaneServices.h"

namespace sim {
namespace {

std::string OwnerName(const std::string& signature) {
  return signature.empty() ? "the simulator" : signature;
}

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string named = entry.Text("planesHeldBy");
  const std::string wanted = named == "simulator" ? "" : named;
  return {.text = fmt::format("AI planes are held by {}", OwnerName(wanted)), .check = [wanted]() -> Finding {
            const std::string owner = AiPlanesOwner();
            return {owner == wanted, OwnerName(owner)};
          }};
}

}  // namespace

ExpectationWord PlanesHeldByExpectation() {
  return {{.key = TextKey("planesHeldBy",
                          "the AI planes are held by the plugin with this signature, or by the "
                          "`simulator`"),
           .others = {}},
          Read};
}

}  // namespace sim
