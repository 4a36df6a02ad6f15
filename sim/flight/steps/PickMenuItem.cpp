#include <fmt/format.h>

#include "flight/steps/Steps.h"
#include "host/MenuServices.h"

namespace sim {
namespace {

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  return [way = entry.Text("pickMenuItem")]() -> Outcome {
    const std::string problem = PickMenuItem(way);
    if (!problem.empty()) return {false, fmt::format("menu item {} not picked: {}", way, problem)};
    return {true, fmt::format("menu item {} picked", way)};
  };
}

}  // namespace

StepWord PickMenuItemStep() {
  return {{.key = TextKey("pickMenuItem",
                          "picks an item of the menu bar by its way through the menus, as in "
                          "`Plugins/Clock/Set to zero`"),
           .others = {}},
          Read};
}

}  // namespace sim
