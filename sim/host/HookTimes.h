// What part of a frame's time passes inside the library, that of its plugins and of the services that they
// ask for included. Reading the clock around each call would cost as much as the calls of a quiet frame, so
// one frame in many is measured.
#pragma once

#include "report/Clock.h"

namespace sim {

struct HookTimes {
  bool isMeasuring = false;
  Nanoseconds inFrames = 0;   // in those that were measured
  Nanoseconds inLibrary = 0;  // of it
};
inline HookTimes gHookTimes;

// A frame, which may be one of those that are measured.
class FrameSample {
 public:
  explicit FrameSample(int frame) : start(frame % kEvery == 0 ? ReadClock() : 0) {
    gHookTimes.isMeasuring = start != 0;
  }
  ~FrameSample() {
    gHookTimes.isMeasuring = false;
    if (start != 0) gHookTimes.inFrames += ReadClock() - start;
  }
  FrameSample(const FrameSample&) = delete;
  FrameSample& operator=(const FrameSample&) = delete;

 private:
  static constexpr int kEvery = 16;

  Nanoseconds start;  // 0: this one is not measured
};

// A call of the library; those inside another one are part of it.
class HookSample {
 public:
  explicit HookSample(bool isOutermost) : start(gHookTimes.isMeasuring && isOutermost ? ReadClock() : 0) {}
  ~HookSample() {
    if (start != 0) gHookTimes.inLibrary += ReadClock() - start;
  }
  HookSample(const HookSample&) = delete;
  HookSample& operator=(const HookSample&) = delete;

 private:
  Nanoseconds start;
};

}  // namespace sim
