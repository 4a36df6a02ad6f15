// What a click is made of, each apart.
#include <fmt/core.h>

#include "flight/steps/Steps.h"
#include "host/UserInput.h"
#include "view/Screen.h"

namespace sim {
namespace {

Effect ReadMove(const Entry& entry, const FlightContext& /*context*/) {
  const Entry place = entry.Object("moveMouse");
  return [x = place.WholeNumber("x"), y = place.WholeNumber("y")] {
    MoveMouse(x, y);
    return Outcome{true, fmt::format("mouse moved to {}, {}", x, y)};
  };
}

Effect ReadPress(const Entry& entry, const FlightContext& /*context*/) {
  const Entry place = entry.Object("pressMouse");
  return [x = place.WholeNumber("x"), y = place.WholeNumber("y")] {
    return Outcome{true, fmt::format("mouse pressed at {}, {}: {}", x, y, TakenBy(PressMouse(x, y)))};
  };
}

Effect ReadRelease(const Entry& /*entry*/, const FlightContext& /*context*/) {
  return [] {
    ReleaseMouse();
    return Outcome{true, fmt::format("mouse released at {}, {}", gScreen.mouseX, gScreen.mouseY)};
  };
}

}  // namespace

StepWord MoveMouseStep() {
  return {{.key = ObjectKey("moveMouse", PixelKeys(),
                            "moves the mouse there: with its button pressed that is a drag, which the window "
                            "hears of in the frame's drawing; the cursor is asked for in each frame"),
           .others = {}},
          ReadMove};
}

StepWord PressMouseStep() {
  return {{.key = ObjectKey("pressMouse", PixelKeys(), "moves the mouse there and presses its button"),
           .others = {}},
          ReadPress};
}

StepWord ReleaseMouseStep() {
  return {{.key = TrueKey("releaseMouse", "releases the mouse's button where the mouse is"), .others = {}},
          ReadRelease};
}

}  // namespace sim
