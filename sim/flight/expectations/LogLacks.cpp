#include <fmt/core.h>

#include "flight/expectations/Expectations.h"
#include "report/Log.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string text = entry.Text("logLacks");
  return {.text = fmt::format("log does not contain \"{}\"", text), .check = [text]() -> Finding {
            const int count = gLog->Count(text);
            return {count == 0, Times(count)};
          }};
}

}  // namespace

ExpectationWord LogLacksExpectation() {
  return {{.key = TextKey("logLacks", "the log so far does not have the text"), .others = {}}, Read};
}

}  // namespace sim
