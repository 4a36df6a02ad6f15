#include <fmt/format.h>
#include <fmt/ranges.h>

#include <limits>

#include "flight/steps/Steps.h"
#include "host/MenuServices.h"

namespace sim {
namespace {

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  return [way = entry.Way("pickMenuItem"), number = entry.WholeNumber("number", 1)]() -> Outcome {
    const std::string name = fmt::format("{}", fmt::join(way, "/"));
    const std::string problem = PickMenuItem(way, number);
    if (!problem.empty()) return {false, fmt::format("menu item {} not picked: {}", name, problem)};
    return {true, fmt::format("menu item {} picked", name)};
  };
}

}  // namespace

StepWord PickMenuItemStep() {
  return {{.key = WayKey("pickMenuItem",
                         "picks an item of the menu bar by its way through the menus, as in "
                         "`Plugins/Clock/Set to zero`; an array when a name has a `/` in it"),
           .others = {Optional(WholeNumberKey("number", 1, std::numeric_limits<int>::max(),
                                              "which, where several have this way; 1 without it"))}},
          Read};
}

}  // namespace sim
