// From nanoseconds and histograms to milliseconds, and from those to a table.
#include "report/Costs.h"

#include <fmt/core.h>

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sim {
namespace {

double Milliseconds(double nanoseconds) { return nanoseconds / 1e6; }

// `frames`: how many times there would be, had those of 0 been noted.
CallCost CostOf(const TimeSeries& series, std::uint64_t calls, std::uint64_t frames) {
  Histogram times = series.times;
  if (frames > times.Count()) times.AddZeros(static_cast<std::uint32_t>(frames - times.Count()));
  return {.calls = static_cast<std::int64_t>(calls),
          .totalMs = Milliseconds(static_cast<double>(times.Sum())),
          .meanMs = Milliseconds(times.Mean()),
          .medianMs = Milliseconds(static_cast<double>(times.Percentile(50))),
          .p99Ms = Milliseconds(static_cast<double>(times.Percentile(99))),
          .longestMs = Milliseconds(static_cast<double>(times.Longest())),
          .longestFrame = series.longestFrame};
}

PluginCost CostOf(const CostBlock& costs, const MeteredPlugin& plugin) {
  PluginCost cost;
  cost.total = CostOf(plugin.series, plugin.calls, plugin.frames);
  cost.total.totalMs = 0.0;
  for (std::size_t kind = kOpening; kind < kCallKinds; ++kind) {
    const MeteredKind& metered = plugin.kinds[kind];
    if (metered.calls == 0) continue;
    const bool isOfLife = IsOfLife(static_cast<int>(kind));
    CallCost& entry = cost.kinds[costs.kindNames[kind].data()];
    entry = CostOf(metered.series, metered.calls, isOfLife ? 0 : plugin.frames);
    entry.totalMs = Milliseconds(static_cast<double>(metered.total));
    entry.isPerCall = isOfLife;
    if (!isOfLife) cost.total.totalMs += entry.totalMs;
  }
  return cost;
}

PluginReport& FindOrAdd(Report& report, const MeteredPlugin& plugin) {
  const std::string_view path = plugin.path.data();
  const auto found = std::ranges::find(report.plugins, path, &PluginReport::path);
  if (found != report.plugins.end()) return *found;
  PluginReport& added = report.plugins.emplace_back();
  added.path = path;
  added.name = plugin.name.data();
  added.signature = plugin.signature.data();
  added.state = plugin.isLoaded ? "loaded" : "unloaded";
  return added;
}

std::string Share(double time, double frameMs, bool isPerCall) {
  return isPerCall ? "-" : fmt::format("{:.2f} %", 100.0 * time / frameMs);
}

std::string Row(std::string_view name, const CallCost& cost, double frameMs) {
  return fmt::format("{:<26.26}{:>9} {:>9.4f} {:>8} {:>9.4f} {:>9.4f} {:>9.4f} {:>8} {:>8}", name, cost.calls,
                     cost.meanMs, Share(cost.meanMs, frameMs, cost.isPerCall), cost.medianMs, cost.p99Ms,
                     cost.longestMs, Share(cost.longestMs, frameMs, cost.isPerCall), cost.longestFrame);
}

void PrintKinds(const PluginCost& cost, double frameMs) {
  std::vector<std::pair<std::string, CallCost>> kinds(cost.kinds.begin(), cost.kinds.end());
  // Those per frame first, dearest first.
  std::ranges::stable_sort(
      kinds, {}, [](const auto& kind) { return std::pair(kind.second.isPerCall, -kind.second.totalMs); });
  for (const auto& [kind, figures] : kinds) fmt::print("{}\n", Row("  " + kind, figures, frameMs));
}

std::vector<const PluginReport*> DearestFirst(const std::vector<PluginReport>& plugins) {
  std::vector<const PluginReport*> order;
  for (const PluginReport& plugin : plugins)
    if (plugin.cost) order.push_back(&plugin);
  std::ranges::stable_sort(order, std::ranges::greater(), [](const PluginReport* plugin) {
    return std::pair(plugin->cost->total.meanMs, plugin->cost->total.totalMs);
  });
  return order;
}

}  // namespace

std::optional<CallCost> CostPerFrame(const CostBlock& costs, std::string_view signature) {
  const std::span plugins(costs.plugins.data(), static_cast<std::size_t>(costs.pluginCount));
  const auto found = std::ranges::find_if(
      plugins, [signature](const MeteredPlugin& plugin) { return signature == plugin.signature.data(); });
  if (found == plugins.end()) return std::nullopt;
  return CostOf(found->series, found->calls, found->frames);
}

void EnterCosts(const CostBlock& costs, Report& report) {
  for (const MeteredPlugin& plugin :
       std::span(costs.plugins).first(static_cast<std::size_t>(costs.pluginCount))) {
    if (plugin.kinds[kStart].calls == 0) {
      report.callsIntoOthers += static_cast<std::int64_t>(plugin.calls);
      continue;
    }
    PluginReport& entry = FindOrAdd(report, plugin);
    entry.loadMs = Milliseconds(static_cast<double>(plugin.load));
    entry.cost = CostOf(costs, plugin);
    if (plugin.framesOverBudget > 0)
      report.otherFailures.push_back(fmt::format(
          "{} ({}) took more than {:g} ms in {} frame{}, first in frame {}; {:.4f} ms in frame {}",
          plugin.name.data(), plugin.signature.data(), Milliseconds(static_cast<double>(costs.budget)),
          plugin.framesOverBudget, plugin.framesOverBudget == 1 ? "" : "s", plugin.firstFrameOverBudget,
          entry.cost->total.longestMs, entry.cost->total.longestFrame));
  }
  report.frames = CostOf(costs.frames, costs.frames.times.Count(), 0);
}

void PrintCosts(const Report& report) {
  if (!report.frames) return;
  const double frameMs = 1000.0 / report.rate;
  fmt::print(
      "\ncosts per frame of {:.2f} ms ({:g} Hz), over {} frames; lines with a - are per call, and not in the "
      "plugin's own\n",
      frameMs, report.rate, report.frames->calls);
  fmt::print("{:<26}{:>9} {:>9} {:>8} {:>9} {:>9} {:>9} {:>8} {:>8} {:>9}\n", "plugin", "calls", "mean ms",
             "share", "median ms", "99 % ms", "longest", "share", "in frame", "load ms");
  for (const PluginReport* plugin : DearestFirst(report.plugins)) {
    const std::string& name = plugin->name.empty() ? plugin->path : plugin->name;
    fmt::print("{} {:>9.3f}\n", Row(name, plugin->cost->total, frameMs), plugin->loadMs);
    PrintKinds(*plugin->cost, frameMs);
  }
  if (report.callsIntoOthers > 0)
    fmt::print("{:<26}{:>9}\n", "(modules not started)", report.callsIntoOthers);
  fmt::print("{}\n", Row("(the whole frame)", *report.frames, frameMs));
}

}  // namespace sim
