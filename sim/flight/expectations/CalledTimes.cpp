#include <fmt/core.h>

#include <limits>

#include "VYRAWatch.h"
#include "flight/expectations/Expectations.h"
#include "host/CallCounts.h"

namespace sim {
namespace {

const std::vector<std::string_view>& KindNames() {
  static const std::vector<std::string_view> kNames = [] {
    std::vector<std::string_view> names;
    for (int kind = VYRA_CALL_OPENING; kind < VYRA_CALL_ERROR + 1; ++kind)
      if (kind != VYRA_CALL_DATAREF) names.emplace_back(VYRAGetCallKindName(kind));
    return names;
  }();
  return kNames;
}

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string signature = entry.Text("called");
  const std::string kind = entry.Text("for");
  const int least = entry.WholeNumber("atLeast", 1);
  const int times = entry.WholeNumber("times", -1);
  CountCalls();
  return {.text = fmt::format("{} was called for {} {}", signature, kind,
                              times < 0 ? "at least " + Times(least) : Times(times)),
          .check = [signature, kind, least, times]() -> Finding {
            const int count = CallCount(signature, kind);
            return {times < 0 ? count >= least : count == times, Times(count)};
          }};
}

}  // namespace

ExpectationWord CalledTimesExpectation() {
  constexpr int kMost = std::numeric_limits<int>::max();
  return {
      {.key = TextKey("called", "the plugin with this signature was called so far in the flight"),
       .others = {ChoiceKey("for", KindNames(),
                            "for this: handlers of commands for `command`, subscribers of shared data for "
                            "`shared data`"),
                  Optional(WholeNumberKey("times", 0, kMost, "exactly so often")),
                  Optional(
                      WholeNumberKey("atLeast", 1, kMost, "or so often at least; once without either"))}},
      Read};
}

}  // namespace sim
