// The last frames in full: what each part of them took, and each call into a plugin. For those who look at
// them while they fly; report/CostMeter.h sums up a whole flight.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/FrameParts.h"
#include "report/Clock.h"

namespace sim {

// A call that has ended. Times are nanoseconds, the beginning's from the frame's beginning on.
struct RecordedCall {
  std::uint32_t begin;
  std::uint32_t duration;
  std::uint32_t own;  // without the calls inside it
  std::uint16_t plugin;
  std::uint8_t kind;   // VYRA_CALL_...
  std::uint8_t depth;  // 0 for the outermost
};

struct RecordedFrame {
  int number = 0;
  Nanoseconds duration = 0;  // of all parts but the rest
  Nanoseconds budget = 0;    // the time until the next one is due
  Nanoseconds sinceLast = 0;
  std::array<Nanoseconds, kFrameParts> parts{};
  Nanoseconds plugins = 0;  // of all of them
  std::vector<std::uint32_t> byPlugin;
  std::vector<RecordedCall> calls;  // in the order in which they began
  int unrecordedCalls = 0;          // beyond the most that are kept; their time counts
};

class FrameHistory {
 public:
  static constexpr std::size_t kFrames = 240;
  static constexpr std::size_t kMostCalls = 4096;  // of a frame
  static constexpr std::size_t kMostDepth = 255;

  // A call as the library's watcher is told of it. The texts stay as they are for the life of the process.
  struct Call {
    int kind;
    const char* signature;  // empty before the plugin's start has ended
    const char* path;
  };

  // `now` is a reading of one clock, here and below. The first part that is told of begins a frame, and so
  // does Input; a frame that has no Pass0, as while the flight is held, is forgotten.
  void BeginPart(FramePart begun, Nanoseconds now);

  // Nobody tells of anything any more, until somebody does again: the frame that is under way is forgotten.
  void Interrupt();

  // What is known when the frame's first pass is over.
  void SetNumber(int number, Nanoseconds budget);

  void BeginCall(const Call& call, Nanoseconds now);
  void EndCall(Nanoseconds now);

  // The frames that are complete, the oldest first.
  std::size_t Count() const { return count; }
  const RecordedFrame& Frame(std::size_t index) const {
    return frames[(next + kFrames - count + index) % kFrames];
  }

  // By the number in RecordedCall and RecordedFrame::byPlugin.
  struct Plugin {
    std::string path;
    std::string signature;  // its path, until its start has ended
  };
  const std::vector<Plugin>& Plugins() const { return plugins; }

 private:
  struct OpenCall {
    std::size_t index;  // in the frame's calls
    std::uint16_t plugin;
    Nanoseconds begin;
    Nanoseconds own;
  };
  // Texts are told apart by their address, as long as that is known.
  struct KnownText {
    const char* path;
    const char* signature;
    std::uint16_t plugin;
  };

  RecordedFrame& Current() { return frames[next]; }
  void BeginFrame(Nanoseconds now);
  void EndFrame(Nanoseconds now);
  std::uint16_t PluginOf(const Call& call);
  void ChargeInnermost(Nanoseconds now);

  std::vector<RecordedFrame> frames = std::vector<RecordedFrame>(kFrames);
  std::size_t next = 0;  // the one that is filled
  std::size_t count = 0;
  bool isInFrame = false;
  bool isFlown = false;
  FramePart part = FramePart::Rest;
  Nanoseconds partBegin = 0;
  Nanoseconds frameBegin = 0;
  Nanoseconds lastFrameBegin = 0;

  std::vector<OpenCall> open;
  std::size_t deeper = 0;  // calls beyond the most that are open
  Nanoseconds lastSwitch = 0;
  std::vector<Plugin> plugins;
  std::vector<KnownText> known;
};

}  // namespace sim
