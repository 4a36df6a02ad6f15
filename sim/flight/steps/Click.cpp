#include <fmt/core.h>

#include "flight/steps/Steps.h"
#include "host/UserInput.h"

namespace sim {
namespace {

Outcome ClickAt(int x, int y) {
  const std::string taker = PressMouse(x, y);
  ReleaseMouse();
  return {true, fmt::format("click at {}, {}: {}", x, y, TakenBy(taker))};
}

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const Entry click = entry.Object("click");
  return [x = click.WholeNumber("x"), y = click.WholeNumber("y")] { return ClickAt(x, y); };
}

}  // namespace

StepWord ClickStep() {
  return {{.key = ObjectKey("click", PixelKeys(), "moves the mouse there, presses and releases its button"),
           .others = {}},
          Read};
}

}  // namespace sim
