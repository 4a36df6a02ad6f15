#include <fmt/core.h>

#include "flight/expectations/Expectations.h"
#include "report/Log.h"

namespace sim {
namespace {

Claim Read(const Entry& /*entry*/, const FlightContext& /*context*/) {
  return {.text = "log has no warnings", .check = []() -> Finding {
            const int count = gLog->CountWarnings();
            if (count == 0) return {true, "none"};
            return {false, fmt::format("{}, the first: {}", count, gLog->FirstWarning())};
          }};
}

}  // namespace

ExpectationWord NoWarningsExpectation() {
  return {{.key = TrueKey("noWarnings",
                          "the log so far has none of the lines that the summary counts as warnings"),
           .others = {}},
          Read};
}

}  // namespace sim
