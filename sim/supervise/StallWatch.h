// Finds calls into plugins that do not return.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "host/FlightBoard.h"

namespace sim {

using Seconds = std::chrono::duration<double>;

struct Stall {
  std::size_t depth = 0;     // of the call, the outermost being 0
  std::uint64_t serial = 0;  // of the call
  Seconds lasted{};
};

// Looks at the board from time to time. Time during which nobody looked, as when everything was stopped,
// counts no more than two intervals, and time that the user takes for a dialog none.
class StallWatch {
 public:
  StallWatch(const FlightBoard& flightBoard, Seconds stallLimit);

  // How often to look, so that a stall is found soon after it has become one.
  Seconds Interval() const;
  void SetLimit(Seconds stallLimit) { limit = stallLimit; }

  // The innermost call that has lasted longer than the limit.
  std::optional<Stall> Look(std::chrono::steady_clock::time_point now);
  // What was counted so far was no stall.
  void Forget() { seen = {}; }

  bool IsStillRunning(const Stall& stall) const;

 private:
  struct SeenCall {
    std::uint64_t serial = 0;
    Seconds lasted{};
  };

  const FlightBoard& board;
  Seconds limit;
  std::optional<std::chrono::steady_clock::time_point> lastLook;
  std::array<SeenCall, kNotedCalls> seen{};
};

}  // namespace sim
