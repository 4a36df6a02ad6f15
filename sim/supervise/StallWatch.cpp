#include "supervise/StallWatch.h"

#include <algorithm>

namespace sim {

StallWatch::StallWatch(const FlightBoard& flightBoard, Seconds stallLimit)
    : board(flightBoard), limit(stallLimit) {}

Seconds StallWatch::Interval() const {
  constexpr Seconds kShortest{0.005};
  constexpr Seconds kLongest{0.2};
  constexpr double kLooksPerLimit = 20.0;
  return std::clamp(limit / kLooksPerLimit, kShortest, kLongest);
}

std::optional<Stall> StallWatch::Look(std::chrono::steady_clock::time_point now) {
  const Seconds passed =
      lastLook && !board.waitsForUser ? std::min(Seconds(now - *lastLook), 2 * Interval()) : Seconds{};
  lastLook = now;
  const std::size_t depth = std::min(static_cast<std::size_t>(board.depth.load()), kNotedCalls);
  std::optional<Stall> stall;
  for (std::size_t i = 0; i < depth; ++i) {
    SeenCall& call = seen[i];
    const std::uint64_t serial = board.calls[i].serial;
    call = {serial, serial == call.serial ? call.lasted + passed : Seconds{}};
    if (call.lasted > limit) stall = {i, serial, call.lasted};
  }
  std::fill(seen.begin() + static_cast<std::ptrdiff_t>(depth), seen.end(), SeenCall());
  return stall;
}

bool StallWatch::IsStillRunning(const Stall& stall) const {
  return static_cast<std::size_t>(board.depth.load()) > stall.depth &&
         board.calls[stall.depth].serial == stall.serial;
}

}  // namespace sim
