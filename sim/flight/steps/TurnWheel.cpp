#include <fmt/core.h>

#include "flight/steps/Steps.h"
#include "host/UserInput.h"

namespace sim {
namespace {

constexpr int kMostClicks = 1'000;
constexpr int kMostWheels = 16;

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const Entry turn = entry.Object("turnWheel");
  return [x = turn.WholeNumber("x"), y = turn.WholeNumber("y"), clicks = turn.WholeNumber("clicks"),
          wheel = turn.WholeNumber("wheel", 0)] {
    return Outcome{true, fmt::format("wheel turned by {} at {}, {}: {}", clicks, x, y,
                                     TakenBy(TurnWheel(x, y, wheel, clicks)))};
  };
}

}  // namespace

StepWord TurnWheelStep() {
  std::vector<Key> keys = PixelKeys();
  keys.push_back(WholeNumberKey("clicks", -kMostClicks, kMostClicks, "positive: away from the user"));
  keys.push_back(Optional(WholeNumberKey("wheel", 0, kMostWheels, "which wheel; 0 without it")));
  return {{.key = ObjectKey("turnWheel", std::move(keys), "moves the mouse there and turns its wheel"),
           .others = {}},
          Read};
}

}  // namespace sim
