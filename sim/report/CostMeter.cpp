// Telling calls' own times apart, and summing them up by frame.
#include "report/CostMeter.h"

#include <algorithm>
#include <bit>
#include <string_view>

namespace sim {
namespace {

constexpr std::uint32_t BitOf(int kind) { return std::uint32_t{1} << static_cast<unsigned>(kind); }

template <std::size_t Size>
void CopyText(std::array<char, Size>& to, std::string_view from) {
  const std::size_t length = std::min(from.size(), Size - 1);
  std::copy_n(from.data(), length, to.data());
  to[length] = '\0';
}

void Note(TimeSeries& series, Nanoseconds time, int frame) {
  if (series.times.Count() == 0 || time > series.times.Longest()) series.longestFrame = frame;
  series.times.Add(time);
}

// The index of a module, which is added when it is not there yet.
int FindOrAdd(CostBlock& block, std::string_view path) {
  MeteredPlugin* const begin = block.plugins.data();
  MeteredPlugin* const end = begin + block.pluginCount;
  const MeteredPlugin* const found =
      std::find_if(begin, end, [path](const MeteredPlugin& plugin) { return path == plugin.path.data(); });
  if (found != end) return static_cast<int>(found - begin);
  if (block.pluginCount == kMostPlugins) return kMostPlugins - 1;
  CopyText(end->path, block.pluginCount == kMostPlugins - 1 ? "(all further plugins)" : path);
  return block.pluginCount++;
}

void AddTraceEvent(CostBlock& block, const TraceEvent& event) {
  if (block.eventCount < kMostTraceEvents) block.events[static_cast<std::size_t>(block.eventCount++)] = event;
}

void TraceCall(CostBlock& block, const OpenCall& call, Nanoseconds end) {
  AddTraceEvent(block, {call.begin, end - call.begin, block.frame, static_cast<std::int16_t>(call.plugin),
                        static_cast<std::int16_t>(call.kind)});
}

int TrackedDepth(const CostBlock& block) { return std::min(block.depth, kMostOpenCalls); }

OpenCall& InnermostCall(CostBlock& block) {
  return block.openCalls[static_cast<std::size_t>(TrackedDepth(block) - 1)];
}

}  // namespace

CostMeter::CostMeter(CostBlock& costs, Nanoseconds now) : block(costs) {
  block.start = now;
  block.isTraced = block.isTracing && block.firstTracedFrame <= 0;
}

void CostMeter::BeginFrame(int frame, Nanoseconds now) {
  block.frame = frame;
  block.isInFrame = true;
  block.frameBegin = now;
  block.isTraced = block.isTracing && block.firstTracedFrame <= frame && frame <= block.lastTracedFrame;
}

void CostMeter::EndFrame(Nanoseconds now) {
  for (int index = 0; index < block.pluginCount; ++index)
    EndFrameOf(block.plugins[static_cast<std::size_t>(index)]);
  Note(block.frames, now - block.frameBegin, block.frame);
  if (block.isTraced)
    AddTraceEvent(block, {block.frameBegin, now - block.frameBegin, block.frame, kNoPlugin, 0});
  block.isInFrame = false;
  // What comes after the last frame is told only when the range does not end there.
  block.isTraced =
      block.isTracing && block.firstTracedFrame <= block.frame && block.frame < block.lastTracedFrame;
}

void CostMeter::EndFrameOf(MeteredPlugin& plugin) const {
  if (!plugin.isLoaded && plugin.kindsInThisFrame == 0) return;
  ++plugin.frames;
  if (plugin.kindsInThisFrame == 0) return;
  while (plugin.kindsInThisFrame != 0) {
    MeteredKind& cost = plugin.kinds[static_cast<std::size_t>(std::countr_zero(plugin.kindsInThisFrame))];
    plugin.kindsInThisFrame &= plugin.kindsInThisFrame - 1;
    Note(cost.series, cost.inThisFrame, block.frame);
    cost.inThisFrame = 0;
  }
  Note(plugin.series, plugin.inThisFrame, block.frame);
  if (block.budget != 0 && plugin.inThisFrame > block.budget && plugin.framesOverBudget++ == 0)
    plugin.firstFrameOverBudget = block.frame;
  plugin.inThisFrame = 0;
}

int CostMeter::PluginOf(const MeteredCall& call) {
  const auto id = static_cast<std::size_t>(std::max(call.plugin, 0));
  if (id >= knownPlugins.size()) knownPlugins.resize(id + 1);
  Known& known = knownPlugins[id];
  if (known.path == call.path && known.name == call.name) return known.plugin;
  known = {call.path, call.name, FindOrAdd(block, call.path)};
  MeteredPlugin& plugin = block.plugins[static_cast<std::size_t>(known.plugin)];
  if (*call.name != '\0') CopyText(plugin.name, call.name);
  if (*call.signature != '\0') CopyText(plugin.signature, call.signature);
  return known.plugin;
}

void CostMeter::ChargeInnermost(Nanoseconds now) {
  OpenCall& call = InnermostCall(block);
  const Nanoseconds time = now - block.lastSwitch;
  call.own += time;
  MeteredPlugin& plugin = block.plugins[static_cast<std::size_t>(call.plugin)];
  MeteredKind& cost = plugin.kinds[static_cast<std::size_t>(call.kind)];
  cost.total += time;
  if (IsOfLife(call.kind)) {
    if (plugin.isLoading) plugin.load += time;
  } else if (block.isInFrame) {
    cost.inThisFrame += time;
    plugin.inThisFrame += time;
    plugin.kindsInThisFrame |= BitOf(call.kind);
  }
}

void CostMeter::BeginCall(const MeteredCall& call, Nanoseconds now) {
  if (block.depth > 0) ChargeInnermost(now);
  block.lastSwitch = now;
  if (++block.depth > kMostOpenCalls) return;
  const int index = PluginOf(call);
  InnermostCall(block) = {index, call.kind, now, 0};
  MeteredPlugin& plugin = block.plugins[static_cast<std::size_t>(index)];
  ++plugin.calls;
  ++plugin.kinds[static_cast<std::size_t>(call.kind)].calls;
  if (call.kind == kOpening) {
    plugin.isLoading = true;
    plugin.load = 0;
  }
}

void CostMeter::EndCall(Nanoseconds now) {
  ChargeInnermost(now);
  block.lastSwitch = now;
  if (block.depth > kMostOpenCalls) {
    --block.depth;
    return;
  }
  const OpenCall& call = InnermostCall(block);
  --block.depth;
  if (block.isTraced) TraceCall(block, call, now);
  if (IsOfLife(call.kind)) NoteEndOfLifeCall(call);
}

void CostMeter::NoteEndOfLifeCall(const OpenCall& call) {
  MeteredPlugin& plugin = block.plugins[static_cast<std::size_t>(call.plugin)];
  Note(plugin.kinds[static_cast<std::size_t>(call.kind)].series, call.own, block.frame);
  if (call.kind == kStart) plugin.isLoaded = true;
  if (call.kind == kClosing) plugin.isLoaded = false;
  if (call.kind == kEnable || call.kind == kClosing) plugin.isLoading = false;
}

void CutShort(CostBlock& block, Nanoseconds now) {
  for (int open = TrackedDepth(block); open > 0; --open)
    if (block.isTraced) TraceCall(block, block.openCalls[static_cast<std::size_t>(open - 1)], now);
  if (block.isInFrame && block.isTraced)
    AddTraceEvent(block, {block.frameBegin, now - block.frameBegin, block.frame, kNoPlugin, 0});
  block.depth = 0;
  block.isInFrame = false;
}

}  // namespace sim
