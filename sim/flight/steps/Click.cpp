#include <fmt/format.h>

#include "VYRAHost.h"
#include "flight/steps/Steps.h"
#include "host/FlightBoard.h"
#include "report/Activity.h"
#include "view/Screen.h"

namespace sim {
namespace {

Outcome ClickAt(int x, int y) {
  gScreen.mouseX = x;
  gScreen.mouseY = y;
  ++gActivity.clicks;
  const bool isTaken = CallHook("VYRAMouseClickHook", VYRAMouseClickHook, x, y, 1) == 0;
  CallHook("VYRAMouseClickHook", VYRAMouseClickHook, x, y, 0);
  return {true, fmt::format("click at {}, {}: {}", x, y, TakenBy(isTaken, "a window"))};
}

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const Entry click = entry.Object("click");
  return [x = click.WholeNumber("x"), y = click.WholeNumber("y")] { return ClickAt(x, y); };
}

}  // namespace

StepWord ClickStep() {
  return {{.key = ObjectKey("click",
                            {WholeNumberKey("x", 0, kScreenWidth - 1, "pixels from the screen's left edge"),
                             WholeNumberKey("y", 0, kScreenHeight - 1, "pixels from its bottom")},
                            "moves the mouse there, presses and releases its button"),
           .others = {}},
          Read};
}

}  // namespace sim
