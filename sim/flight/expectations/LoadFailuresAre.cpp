#include <fmt/core.h>

#include <limits>

#include "flight/expectations/Expectations.h"
#include "host/LoadWatch.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const int wanted = entry.WholeNumber("loadFailures");
  return {.text = fmt::format("number of load failures is {}", wanted),
          .check =
              [wanted] {
                return Finding{CountLoadFailures() == wanted, DescribeLoadFailures()};
              },
          .coversLoadFailures = true};
}

}  // namespace

ExpectationWord LoadFailuresAreExpectation() {
  return {
      {.key = WholeNumberKey("loadFailures", 0, std::numeric_limits<int>::max(),
                             "so many modules could not be loaded so far, and these do not fail the flight"),
       .others = {}},
      Read};
}

}  // namespace sim
