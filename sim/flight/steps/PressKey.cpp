#include <fmt/format.h>
#include <cctype>
#include <limits>

#include "VYRAHost.h"
#include "flight/steps/Steps.h"
#include "host/FlightBoard.h"
#include "report/Activity.h"

namespace sim {
namespace {

Outcome Press(char key, int flags) {
  ++gActivity.keys;
  const int virtualKey = std::toupper(static_cast<unsigned char>(key));
  const bool isTaken = CallHook("VYRAKeyPressHook", VYRAKeyPressHook, key, flags, virtualKey) == 0;
  return {true, fmt::format("key {}: {}", key, TakenBy(isTaken, "a plugin"))};
}

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string key = entry.Text("key");
  if (key.size() != 1 || std::isalnum(static_cast<unsigned char>(key.front())) == 0)
    entry.FailAtValue("key", "\"key\" must be one letter or digit");
  return [letter = key.front(), flags = entry.WholeNumber("flags", 0)] { return Press(letter, flags); };
}

}  // namespace

StepWord PressKeyStep() {
  return {
      {.key = TextKey("key", "presses a letter or digit; its virtual key is the same in upper case"),
       .others = {Optional(WholeNumberKey("flags", 0, std::numeric_limits<int>::max(), "the modifiers"))}},
      Read};
}

}  // namespace sim
