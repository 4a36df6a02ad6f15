#include <fmt/core.h>

#include "flight/expectations/Expectations.h"
#include "host/CostWatch.h"
#include "report/Costs.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string signature = entry.Text("cost");
  const double most = entry.Number("below");
  const std::string figure = entry.Text("of", "mean");
  return {.text = fmt::format("{} cost of {} per frame is below {:.9g} ms", figure, signature, most),
          .check = [signature, most, figure]() -> Finding {
            const CostBlock* const costs = MeasuredCosts();
            const std::optional<CallCost> cost =
                costs != nullptr ? CostPerFrame(*costs, signature) : std::nullopt;
            if (!cost) return {false, "no such plugin"};
            const double found = figure == "mean"     ? cost->meanMs
                                 : figure == "median" ? cost->medianMs
                                 : figure == "p99"    ? cost->p99Ms
                                                      : cost->longestMs;
            return {found < most, fmt::format("{:.6f} ms", found)};
          },
          .needsCosts = true,
          .isCostly = true};
}

}  // namespace

ExpectationWord CostBelowExpectation() {
  return {{.key = TextKey("cost", "what the plugin with this signature takes of a frame so far"),
           .others = {AmountKey("below", "is less than so many milliseconds"),
                      Optional(ChoiceKey("of", {"mean", "median", "p99", "longest"},
                                         "over all frames in which it was there; `mean` without it"))}},
          Read};
}

}  // namespace sim
