#include <fmt/format.h>
#include <fmt/ranges.h>

#include "flight/expectations/Expectations.h"
#include "host/MenuServices.h"

namespace sim {
namespace {

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::vector<std::string> way = entry.Way("menuItem");
  const std::string wanted = entry.Text("is");
  return {.text = fmt::format("menu item {} is {}", fmt::join(way, "/"), wanted),
          .check = [way, wanted]() -> Finding {
            const std::string state = MenuItemState(way);
            return {state == wanted, state};
          }};
}

}  // namespace

ExpectationWord MenuItemIsExpectation() {
  return {{.key = WayKey("menuItem", "the item with this way through the menus is in this state"),
           .others = {ChoiceKey("is", {"absent", "disabled", "plain", "unchecked", "checked"},
                                "`plain` has no place for a check mark")}},
          Read};
}

}  // namespace sim
