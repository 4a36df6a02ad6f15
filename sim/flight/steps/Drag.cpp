#include <fmt/core.h>

#include <utility>
#include <vector>

#include "flight/steps/Steps.h"
#include "host/UserInput.h"

namespace sim {
namespace {

// Presses at the first point, moves to the next one in each frame, and releases in the frame after the last:
// a window hears of the drag to a point when the frame is drawn.
class Drag {
 public:
  explicit Drag(std::vector<Pixel> pointsOnTheWay) : points(std::move(pointsOnTheWay)) {}

  Outcome operator()() {
    if (next == points.size()) {
      ReleaseMouse();
      return {true, fmt::format("dragged from {}, {} to {}, {}: {}", points.front().x, points.front().y,
                                points.back().x, points.back().y, TakenBy(taker))};
    }
    const Pixel point = points[next];
    if (next == 0)
      taker = PressMouse(point.x, point.y);
    else
      MoveMouse(point.x, point.y);
    ++next;
    return {.succeeded = true, .text = "", .isDone = false};
  }

 private:
  std::vector<Pixel> points;
  std::size_t next = 0;
  std::string taker;
};

Effect Read(const Entry& entry, const FlightContext& /*context*/) { return Drag(entry.Points("drag")); }

}  // namespace

StepWord DragStep() {
  return {
      {.key = PointsKey("drag",
                        "presses the mouse's button at the first point, moves it to one more in each frame, "
                        "and releases it after the last"),
       .others = {}},
      Read};
}

}  // namespace sim
