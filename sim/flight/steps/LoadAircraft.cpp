#include <fmt/core.h>
#include <filesystem>

#include "flight/steps/Steps.h"
#include "host/Packages.h"

namespace sim {
namespace {

constexpr std::size_t kModelPathBuffer = 256;  // as the library reads a model's path

Effect Read(const Entry& entry, const FlightContext& context) {
  const std::string path = context.systemPath + entry.Text("loadAircraft");
  if (!std::filesystem::is_regular_file(path))
    entry.FailAtValue("loadAircraft", fmt::format("there is no aircraft file {}", path));
  if (path.size() >= kModelPathBuffer)
    entry.FailAtValue("loadAircraft",
                      fmt::format("the path is longer than {} bytes: {}", kModelPathBuffer - 1, path));
  return [path] {
    const PackageOutcome outcome = LoadUserAircraft(path);
    return Outcome{outcome.succeeded, outcome.text};
  };
}

}  // namespace

StepWord LoadAircraftStep() {
  return {
      {.key = TextKey("loadAircraft",
                      "gives plane 0 the model of this file and calls event 3; an aircraft that was loaded "
                      "before is unloaded first"),
       .others = {}},
      Read};
}

}  // namespace sim
