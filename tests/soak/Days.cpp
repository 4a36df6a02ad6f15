// Days of frames. The library's clock is the host's float, so what is exact at first becomes coarse: the
// checks here allow what that leads to and nothing else, and the figures say from when it is felt.
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "../RecordingHost.h"
#include "Soak.h"
#include "VYRAHost.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

namespace soak {
namespace {

constexpr double kRate = 60;
constexpr double kHour = 3600;

// The frame that is flown, as the host knows it.
double gTime = 0;  // seconds
float gNow = 0;    // what the library is told
int gPasses = 0;

double Spacing(float value) { return static_cast<double>(std::nextafter(value, INFINITY) - value); }

struct Range {
  double smallest = INFINITY;
  double largest = 0;
  void Add(double value) {
    smallest = std::min(smallest, value);
    largest = std::max(largest, value);
  }
};

// A flight loop and what is known of its last call.
struct Loop {
  float interval;  // as flight loops return it
  int phase;
  double lastTime = 0;
  float lastNow = 0;
  int lastPass = 0;
  long calls = 0;
  Range gap = {};           // seconds, or passes; since the last time that it was printed
  double firstOff = -1;     // hours, when a gap was first off by more than a tenth and a frame
  double firstRough = -1;   // hours, when it was first told of a time that was off by more than a tenth
  double firstNoTime = -1;  // hours, when it was first told that no time had gone by

  void CheckArguments(float sinceLastCall, float now, int counter);
  void CheckSeconds();
  void CheckPasses();
};

// Due in the first pass whose time, rounded, has reached a sum that was rounded too.
void Loop::CheckSeconds() {
  const double seconds = gTime - lastTime;
  const double room = 1.5 * Spacing(gNow) + 1e-9;
  if (seconds < static_cast<double>(interval) - room ||
      seconds > static_cast<double>(interval) + 1 / kRate + room) {
    Fault("an interval of %g s was %g s after %g s", static_cast<double>(interval), seconds, gTime);
  }
  gap.Add(seconds);
  const double off = std::fabs(seconds - static_cast<double>(interval)) - 1 / kRate;
  if (off > 0.1 * static_cast<double>(interval) && firstOff < 0) firstOff = gTime / kHour;
}

// The pass of its own phase that is due first. Floats hold the counter exactly up to a number; from there on
// the pass and the sum are rounded.
void Loop::CheckPasses() {
  constexpr int kLastExact = 1 << 24;
  const int passes = gPasses - lastPass;
  const double wanted = std::ceil(static_cast<double>(-interval) / 2) * 2;
  const double room = gPasses <= kLastExact ? 0 : Spacing(static_cast<float>(gPasses));
  if (passes < wanted - room || passes > wanted + room) {
    Fault("an interval of %g passes was %d passes after pass %d", static_cast<double>(-interval), passes,
          gPasses);
  }
  gap.Add(passes);
  if (passes != static_cast<int>(wanted) && firstOff < 0) firstOff = gTime / kHour;
}

void Loop::CheckArguments(float sinceLastCall, float now, int counter) {
  if (now != gNow) Fault("the clock of a pass is %g s at %g s", static_cast<double>(now), gTime);
  if (counter != gPasses || VYRAGetCycleNumber() != gPasses) Fault("pass %d is number %d", gPasses, counter);
  if (sinceLastCall != gNow - lastNow) {
    Fault("%g s since the last call at %g s", static_cast<double>(sinceLastCall), gTime);
  }
  const double seconds = gTime - lastTime;
  const double off = std::fabs(static_cast<double>(sinceLastCall) - seconds);
  if (off > 0.1 * seconds && firstRough < 0) firstRough = gTime / kHour;
  if (sinceLastCall <= 0 && firstNoTime < 0) firstNoTime = gTime / kHour;
}

float OnLoop(float sinceLastCall, float now, int counter, void* refcon) {
  Loop& loop = *static_cast<Loop*>(refcon);
  loop.CheckArguments(sinceLastCall, now, counter);
  if (loop.calls++ > 0) {
    if (loop.interval > 0) {
      loop.CheckSeconds();
    } else {
      loop.CheckPasses();
    }
  }
  loop.lastTime = gTime;
  loop.lastNow = gNow;
  loop.lastPass = gPasses;
  return loop.interval;
}

constexpr int kEveryPass = 0;
std::array<Loop, 11> gLoops = {{{-1, 0},
                                {-2, 1},
                                {-3, 0},
                                {-10, 1},
                                {-60, 0},
                                {0.01F, 0},
                                {0.05F, 1},
                                {0.1F, 0},
                                {1, 1},
                                {1, 0},
                                {60, 0}}};

void Create() {
  for (Loop& loop : gLoops) {
    const VYRAFlightLoopParams params = {sizeof(params), loop.phase, OnLoop, &loop};
    VYRAScheduleFlightLoop(VYRACreateFlightLoop(&params), loop.interval, 0);
  }
}

void PrintDay(long day) {
  std::printf("%4ld d, clock in steps of %6.2f ms:", day, 1000 * Spacing(gNow));
  for (Loop& loop : gLoops) {
    const bool inSeconds = loop.interval > 0;
    const double unit = inSeconds ? 1000 : 1;
    std::printf("  %g%s %.0f-%.0f", static_cast<double>(std::fabs(loop.interval)), inSeconds ? " s" : " p",
                unit * loop.gap.smallest, unit * loop.gap.largest);
    loop.gap = {};
  }
  std::puts("");
}

void PrintLoops() {
  for (const Loop& loop : gLoops) {
    std::printf("%7g %s, phase %d: %9ld calls", static_cast<double>(std::fabs(loop.interval)),
                loop.interval > 0 ? "s     " : "passes", loop.phase, loop.calls);
    if (loop.firstOff >= 0) std::printf(", off from %.2f h on", loop.firstOff);
    if (loop.firstRough >= 0) std::printf(", told of a rough time from %.2f h on", loop.firstRough);
    if (loop.firstNoTime >= 0) std::printf(", told of no time from %.2f h on", loop.firstNoTime);
    std::puts("");
  }
}

void FlyFrame(long frame) {
  gTime = static_cast<double>(frame) / kRate;
  gNow = static_cast<float>(gTime);
  for (const int event : {VYRA_EVENT_FLIGHT_LOOPS_0, VYRA_EVENT_FLIGHT_LOOPS_1}) {
    ++gPasses;
    VYRAEventHook(event, nullptr, nullptr, gNow, gNow);
  }
}

}  // namespace

void SoakDays(double days) {
  gHost.services.GetElapsedTime = [] { return gNow; };
  VYRAInitializePlugins("/nowhere/", &gHost.services, nullptr);
  Create();
  const auto begin = std::chrono::steady_clock::now();
  const long frames = std::lround(days * 24 * kHour * kRate);
  const long framesOfADay = std::lround(24 * kHour * kRate);
  for (long frame = 1; frame <= frames; ++frame) {
    FlyFrame(frame);
    if (frame % framesOfADay == 0) PrintDay(frame / framesOfADay);
  }
  PrintLoops();
  const long ofEveryPass = gLoops[kEveryPass].calls;
  if (ofEveryPass != frames) Fault("%ld calls in %ld frames", ofEveryPass, frames);
  if (VYRAGetCycleNumber() != gPasses) Fault("%d passes are counted as %d", gPasses, VYRAGetCycleNumber());
  VYRAShutdownPlugins();
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  std::printf("%ld frames in %.1f s\n", frames, seconds.count());
}

}  // namespace soak
