#include <fmt/core.h>

#include "flight/steps/Steps.h"
#include "host/CommandServices.h"
#include "report/Moment.h"

namespace sim {
namespace {

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const Entry command = entry.Object("command");
  return [name = command.Text("name"), passes = command.WholeNumber("passes")]() -> Outcome {
    const std::string problem = HoldCommand(name, passes);
    if (!problem.empty()) return {false, fmt::format("command {} not pressed: {}", name, problem)};
    return {true, fmt::format("command {} held for {} pass{}", name, passes, passes == 1 ? "" : "es")};
  };
}

}  // namespace

StepWord HoldCommandStep() {
  return {
      {.key = ObjectKey("command",
                        {TextKey("name", "the command's name"),
                         WholeNumberKey("passes", 1, kMaxFrames, "for how many frames, this one the first")},
                        "presses a command, continues it in so many frames, and then releases it"),
       .others = {}},
      Read};
}

}  // namespace sim
