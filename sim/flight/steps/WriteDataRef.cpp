#include <fmt/format.h>

#include "flight/steps/Steps.h"
#include "host/DataRefValue.h"

namespace sim {
namespace {

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const Entry write = entry.Object("writeDataRef");
  const std::string name = write.Text("name");
  const DataRefValue value = write.Value("value");
  return [name, value]() -> Outcome {
    const std::string problem = WriteDataRef(name, value);
    if (!problem.empty()) return {false, fmt::format("{} cannot be written: {}", name, problem)};
    return {true, fmt::format("{} set to {}", name, ToText(value))};
  };
}

}  // namespace

StepWord WriteDataRefStep() {
  return {
      {.key = ObjectKey("writeDataRef",
                        {TextKey("name", "the dataref's name"),
                         ValueKey("value",
                                  "a number; an array of numbers, written from element 0; or a text, written "
                                  "with its terminator")},
                        "writes a dataref"),
       .others = {}},
      Read};
}

}  // namespace sim
