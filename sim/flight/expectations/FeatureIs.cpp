#include <fmt/core.h>

#include "VYRAPlugin.h"
#include "flight/expectations/Expectations.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string feature = entry.Text("feature");
  const std::string wanted = entry.Text("is");
  return {.text = fmt::format("feature {} is {}", feature, wanted), .check = [feature, wanted]() -> Finding {
            const std::string found = VYRAHasFeature(feature.c_str()) != 0 ? "known" : "unknown";
            return {found == wanted, found};
          }};
}

}  // namespace

ExpectationWord FeatureIsExpectation() {
  return {{.key = TextKey("feature", "the library knows a feature of this name, or does not"),
           .others = {ChoiceKey(
               "is", {"known", "unknown"},
               "whether a plugin has it is that plugin's own affair, and shows in what it does")}},
          Read};
}

}  // namespace sim
