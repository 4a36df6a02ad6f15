#include <fmt/core.h>
#include <filesystem>

#include "flight/steps/Steps.h"
#include "host/Packages.h"

namespace sim {
namespace {

Effect Read(const Entry& entry, const FlightContext& context) {
  return [folder = SceneryFolder(entry, "loadScenery", context)] {
    return Outcome{true, LoadScenery(folder)};
  };
}

}  // namespace

std::string SceneryFolder(const Entry& entry, std::string_view word, const FlightContext& context) {
  std::string folder = context.systemPath + entry.Text(word);
  if (!std::filesystem::is_directory(folder))
    entry.FailAtValue(word, fmt::format("there is no folder {}", folder));
  if (!folder.ends_with('/')) folder += '/';
  return folder;
}

StepWord LoadSceneryStep() {
  return {{.key = TextKey(
               "loadScenery",
               "opens the package in this folder: calls event 12 for it, or enables its plugins again; "
               "needed again after a reload, which unloads scenery plugins"),
           .others = {}},
          Read};
}

}  // namespace sim
