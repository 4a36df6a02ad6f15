// When something happens in a flight: the number of a frame, or one of the moments before the first
// and behind the last frame.
#pragma once

#include <limits>
#include <string>

namespace sim {

constexpr int kMaxFrames = 10'000'000;

constexpr int kAfterStart = 0;
constexpr int kAtEnd = std::numeric_limits<int>::max() - 1;
constexpr int kAfterShutdown = std::numeric_limits<int>::max();

// "frame 12", "start", "end" or "shutdown".
std::string MomentName(int moment);

}  // namespace sim
