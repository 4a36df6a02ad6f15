// What is known of the time that plugins take: filled by the process that flies, and still readable by its
// parent when a plugin has ended that process. So everything lies in one block of a fixed size that both map,
// without pointers; all bytes zero is its beginning. Only what is touched takes memory.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "report/Histogram.h"

namespace sim {

// Kinds of call, as the library numbers them: those of a plugin's life first, which belong to no frame,
// whenever they happen.
constexpr int kOpening = 1;
constexpr int kStart = 2;
constexpr int kEnable = 3;
constexpr int kClosing = 6;
constexpr int kCallKinds = 26;
constexpr bool IsOfLife(int kind) { return kind >= kOpening && kind <= kClosing; }

constexpr int kMostPlugins = 256;         // the last of them stands for all that come after it
constexpr int kMostOpenCalls = 512;       // calls nested deeper count as part of the innermost of these
constexpr int kMostTraceEvents = 32'768;  // that wait to be written

// Times, and the frame of the longest of them.
struct TimeSeries {
  Histogram times;
  int longestFrame;
};

struct MeteredKind {
  std::uint64_t calls;
  Nanoseconds total;
  Nanoseconds inThisFrame;
  // A time for each frame with such calls in it; of the kinds of a plugin's life, one for each call.
  TimeSeries series;
};

// A module, known by its path.
struct MeteredPlugin {
  std::array<char, 512> path;
  std::array<char, 256> name;  // empty until the plugin has started
  std::array<char, 256> signature;
  bool isLoaded;
  bool isLoading;  // until it was enabled for the first time
  std::uint64_t calls;
  Nanoseconds load;      // opening, start and enable, of the last time that it was loaded
  std::uint32_t frames;  // in which it was there
  Nanoseconds inThisFrame;
  std::uint32_t kindsInThisFrame;  // a bit each
  TimeSeries series;               // a time for each frame with calls in it
  std::uint32_t framesOverBudget;
  int firstFrameOverBudget;
  std::array<MeteredKind, kCallKinds> kinds;
};

struct OpenCall {
  int plugin;  // index in CostBlock::plugins
  int kind;
  Nanoseconds begin;
  Nanoseconds own;  // what it took so far, without the calls inside it
};

// A call that has ended, or a frame.
struct TraceEvent {
  Nanoseconds begin;
  Nanoseconds duration;
  int frame;
  std::int16_t plugin;  // index in CostBlock::plugins, or kNoPlugin for a frame
  std::int16_t kind;
};

constexpr std::int16_t kNoPlugin = -1;

struct CostBlock {
  // Set before the flight.
  std::array<std::array<char, 24>, kCallKinds> kindNames;
  Nanoseconds budget;  // per frame and plugin; 0 for none
  bool isTracing;
  int firstTracedFrame;  // 0 is what comes before the first frame
  int lastTracedFrame;

  Nanoseconds start;  // the trace's zero
  int frame;          // the current or last one
  bool isInFrame;
  bool isTraced;  // what happens now
  Nanoseconds frameBegin;
  TimeSeries frames;

  int pluginCount;
  std::array<MeteredPlugin, kMostPlugins> plugins;

  int depth;               // also of the calls that are not among the open ones
  Nanoseconds lastSwitch;  // since then the innermost open call runs
  std::array<OpenCall, kMostOpenCalls> openCalls;

  int eventCount;
  bool traceIsEnded;
  bool traceFailed;  // not all of it could be written
  std::array<TraceEvent, kMostTraceEvents> events;
};

// A block that child processes share with this one. Throws std::system_error.
struct CostBlockUnmapper {
  void operator()(CostBlock* block) const;
};
using SharedCostBlock = std::unique_ptr<CostBlock, CostBlockUnmapper>;
SharedCostBlock MapCostBlock();

}  // namespace sim
