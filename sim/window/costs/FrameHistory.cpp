#include "window/costs/FrameHistory.h"

#include <algorithm>
#include <limits>

namespace sim {
namespace {

constexpr std::size_t kMostPlugins = std::numeric_limits<std::uint16_t>::max();
constexpr std::size_t kUnrecorded = std::numeric_limits<std::size_t>::max();

std::uint32_t Narrow(Nanoseconds time) {
  return static_cast<std::uint32_t>(std::min<Nanoseconds>(time, std::numeric_limits<std::uint32_t>::max()));
}

std::size_t IndexOf(FramePart part) { return static_cast<std::size_t>(part); }

}  // namespace

void FrameHistory::BeginPart(FramePart begun, Nanoseconds now) {
  if (isInFrame) {
    Current().parts[IndexOf(part)] += now - partBegin;
    if (begun == FramePart::Rest || begun == FramePart::Input) EndFrame(now);
  }
  if (!isInFrame && begun == FramePart::Input) BeginFrame(now);
  if (begun == FramePart::Pass0) isFlown = true;
  part = begun;
  partBegin = now;
}

void FrameHistory::BeginFrame(Nanoseconds now) {
  isInFrame = true;
  isFlown = false;
  frameBegin = now;
  RecordedFrame& frame = Current();
  frame.parts.fill(0);
  frame.plugins = 0;
  frame.byPlugin.assign(plugins.size(), 0);
  frame.calls.clear();
  frame.unrecordedCalls = 0;
}

void FrameHistory::EndFrame(Nanoseconds now) {
  isInFrame = false;
  // Of a call that goes on it is not known what it takes.
  if (!isFlown || !open.empty()) {
    lastFrameBegin = 0;
    return;
  }
  RecordedFrame& frame = Current();
  frame.duration = now - frameBegin;
  frame.sinceLast = lastFrameBegin == 0 ? 0 : frameBegin - lastFrameBegin;
  lastFrameBegin = frameBegin;
  next = (next + 1) % kFrames;
  count = std::min(count + 1, kFrames - 1);  // one is always being filled
}

void FrameHistory::Interrupt() {
  isInFrame = false;
  lastFrameBegin = 0;
  open.clear();
  deeper = 0;
}

void FrameHistory::SetNumber(int number, Nanoseconds budget) {
  Current().number = number;
  Current().budget = budget;
}

std::uint16_t FrameHistory::PluginOf(const Call& call) {
  for (const KnownText& text : known)
    if (text.path == call.path && text.signature == call.signature) return text.plugin;
  auto found = std::ranges::find(plugins, call.path, &Plugin::path);
  if (found == plugins.end()) {
    if (plugins.size() == kMostPlugins) return kMostPlugins - 1;
    found = plugins.insert(plugins.end(), {call.path, call.path});
  }
  if (*call.signature != '\0') found->signature = call.signature;
  const auto plugin = static_cast<std::uint16_t>(found - plugins.begin());
  known.push_back({call.path, call.signature, plugin});
  return plugin;
}

void FrameHistory::ChargeInnermost(Nanoseconds now) {
  OpenCall& call = open.back();
  const Nanoseconds time = now - lastSwitch;
  call.own += time;
  if (!isInFrame) return;
  RecordedFrame& frame = Current();
  if (frame.byPlugin.size() <= call.plugin) frame.byPlugin.resize(call.plugin + 1UL, 0);
  frame.byPlugin[call.plugin] += Narrow(time);
  frame.plugins += time;
}

void FrameHistory::BeginCall(const Call& call, Nanoseconds now) {
  if (!open.empty()) ChargeInnermost(now);
  lastSwitch = now;
  if (open.size() == kMostDepth) {
    ++deeper;
    return;
  }
  std::size_t index = kUnrecorded;
  const std::uint16_t plugin = PluginOf(call);
  if (isInFrame && Current().calls.size() < kMostCalls) {
    index = Current().calls.size();
    Current().calls.push_back({.begin = Narrow(now - frameBegin),
                               .duration = 0,
                               .own = 0,
                               .plugin = plugin,
                               .kind = static_cast<std::uint8_t>(call.kind),
                               .depth = static_cast<std::uint8_t>(open.size())});
  } else if (isInFrame) {
    ++Current().unrecordedCalls;
  }
  open.push_back({index, plugin, now, 0});
}

void FrameHistory::EndCall(Nanoseconds now) {
  if (open.empty()) return;  // it began before anybody listened
  ChargeInnermost(now);
  lastSwitch = now;
  if (deeper > 0) {
    --deeper;
    return;
  }
  const OpenCall call = open.back();
  open.pop_back();
  if (call.index == kUnrecorded || call.index >= Current().calls.size()) return;
  RecordedCall& recorded = Current().calls[call.index];
  recorded.duration = Narrow(now - call.begin);
  recorded.own = Narrow(call.own);
}

}  // namespace sim
