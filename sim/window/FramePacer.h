// When frames are due in real time.
#pragma once

#include <chrono>

namespace sim {

class FramePacer {
 public:
  // Frames per second. Time runs from here on.
  explicit FramePacer(double frameRate);

  // Waits until a frame is due, and says how many are: more than one when the last ones took longer than they
  // last. Whoever comes so late that it was no matter of drawing does not catch up: that time is not flown.
  int Wait();

 private:
  using Clock = std::chrono::steady_clock;

  std::chrono::duration<double> frameTime;
  Clock::time_point nextFrame;
};

}  // namespace sim
