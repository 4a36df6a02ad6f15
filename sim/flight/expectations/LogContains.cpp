#include <fmt/core.h>
#include <limits>
#include <optional>

#include "flight/expectations/Expectations.h"
#include "report/Log.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string text = entry.Text("logContains");
  std::optional<int> times;
  if (entry.Has("times")) times = entry.WholeNumber("times");
  return {.text = fmt::format("log contains \"{}\" {}", text, times ? Times(*times) : "at least once"),
          .check = [text, times]() -> Finding {
            const int count = gLog->Count(text);
            return {times ? count == *times : count > 0, Times(count)};
          }};
}

}  // namespace

ExpectationWord LogContainsExpectation() {
  return {
      {.key = TextKey("logContains", "the log so far has the text"),
       .others = {Optional(WholeNumberKey("times", 1, std::numeric_limits<int>::max(), "exactly so often"))}},
      Read};
}

}  // namespace sim
