#include <fmt/format.h>
#include <filesystem>

#include "flight/steps/Steps.h"
#include "host/Packages.h"

namespace sim {
namespace {

Effect Read(const Entry& entry, const FlightContext& context) {
  std::string folder = context.systemPath + entry.Text("loadScenery");
  if (!std::filesystem::is_directory(folder))
    entry.FailAtValue("loadScenery", fmt::format("there is no folder {}", folder));
  if (!folder.ends_with('/')) folder += '/';
  return [folder] { return Outcome{true, LoadScenery(folder)}; };
}

}  // namespace

StepWord LoadSceneryStep() {
  return {
      {.key = TextKey("loadScenery",
                      "calls event 12 for this folder; needed again after a reload, which unloads scenery "
                      "plugins"),
       .others = {}},
      Read};
}

}  // namespace sim
