#include "flight/steps/Steps.h"
#include "host/Packages.h"

namespace sim {
namespace {

Effect Read(const Entry& entry, const FlightContext& context) {
  return [folder = SceneryFolder(entry, "unloadScenery", context)] {
    return Outcome{true, UnloadScenery(folder)};
  };
}

}  // namespace

StepWord UnloadSceneryStep() {
  return {
      {.key = TextKey("unloadScenery",
                      "closes the package in this folder: plugins no longer find its objects, and its own "
                      "plugins are disabled, which `loadScenery` undoes"),
       .others = {}},
      Read};
}

}  // namespace sim
