#include "window/FramePacer.h"

#include <algorithm>
#include <thread>

namespace sim {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr Seconds kMostToCatchUp{0.25};
// A display that shows as many frames as are flown must not wait for the one after the next.
constexpr Seconds kEarly{0.002};

}  // namespace

FramePacer::FramePacer(double frameRate) : frameTime(1.0 / frameRate), nextFrame(Clock::now()) {}

int FramePacer::Wait() {
  std::this_thread::sleep_until(nextFrame - std::chrono::duration_cast<Clock::duration>(kEarly));
  const Clock::time_point now = Clock::now();
  const Seconds late = now - nextFrame;
  const bool isFarBehind = late > std::max(kMostToCatchUp, frameTime);
  if (isFarBehind) nextFrame = now;
  const int due = isFarBehind ? 1 : 1 + std::max(static_cast<int>(late / frameTime), 0);
  nextFrame += std::chrono::duration_cast<Clock::duration>(due * frameTime);
  return due;
}

}  // namespace sim
