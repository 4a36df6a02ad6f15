// Printing the report.
#include "report/Summary.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>

namespace sim {
namespace {

void PrintPlugins(const std::vector<PluginReport>& plugins) {
  fmt::print("\n  ID  enabled  {:<24}signature\n", "name");
  fmt::print("{:>4}  {:<7}  {:<24}{}\n", 0, "yes", "Skyvora", "-");
  for (const PluginReport& plugin : plugins) {
    if (plugin.state == "passed over") continue;
    fmt::print("{:>4}  {:<7}  {:<24}{}\n", plugin.id, plugin.state == "enabled" ? "yes" : "no", plugin.name,
               plugin.signature);
  }
  for (const PluginReport& plugin : plugins)
    if (plugin.state == "passed over")
      fmt::print("   -  passed over  {}{}\n", plugin.path,
                 plugin.signature.empty() ? "" : fmt::format(" ({})", plugin.signature));
}

std::string Counted(long long count, const char* thing) {
  return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

void PrintActivity(const Activity& activity) {
  fmt::print("\nuser                {}, {}, {}, {} held for {} passes in all\n",
             Counted(activity.clicks, "click"), Counted(activity.keys, "key"),
             Counted(activity.menuPicks, "menu pick"), Counted(activity.commandsHeld, "command"),
             activity.commandPasses);
  fmt::print("screen              {} and {} drawn by plugins\n", Counted(activity.textsDrawn, "text"),
             activity.boxesDrawn == 1 ? "1 box" : fmt::format("{} boxes", activity.boxesDrawn));
  fmt::print("camera              taken {} by plugins, for {} in all\n",
             Counted(activity.cameraTakings, "time"), Counted(activity.cameraFrames, "frame"));
  fmt::print("AI planes           taken {}, given back {}\n", Counted(activity.planesTakings, "time"),
             Counted(activity.planesReturns, "time"));
  fmt::print("terrain             {}, {} found ground\n", Counted(activity.probings, "probe"),
             activity.probingsThatHit);
  fmt::print("objects             {} loaded, {} released, drawn {}\n", activity.objectsLoaded,
             activity.objectsReleased, Counted(activity.objectsDrawn, "time"));
}

// One line each, where a reader looks: why a module is not there.
void PrintLoadFailures(const Report& report) {
  if (!report.loadFailures.empty()) fmt::print("\nnot loaded\n");
  for (const LoadFailure& failure : report.loadFailures)
    fmt::print("  {}: {}\n", failure.path, failure.reason);
  if (HasPlugins(report) || report.foldersLookedAt.empty()) return;
  fmt::print("\nno plugins: looked for *.vyp, */64/lin.vyp and */lin.vyp in {}\n",
             fmt::join(report.foldersLookedAt, ", "));
}

void PrintTotals(const FlightTotals& totals, double rate) {
  PrintActivity(totals.activity);
  fmt::print("\npasses flown        {} (frames: {} at {:g} Hz, {:.2f} s simulated)\n", totals.passes,
             totals.frames, rate, totals.frames / rate);
  fmt::print("wall time per pass  median {:.2f} us, 99th percentile {:.2f} us, longest {:.2f} us\n",
             totals.medianPassMicroseconds, totals.p99PassMicroseconds, totals.longestPassMicroseconds);
  fmt::print("speed               {:.4g} times real time, {:.0f} % of it in the library and its plugins\n",
             totals.timesRealTime, 100.0 * totals.libraryShare);
  if (totals.shownFrames > 0)
    fmt::print("window              {} frames shown, {:.1f} a second\n", totals.shownFrames,
               totals.shownPerSecond);
  fmt::print("log warnings        {}\n", totals.warnings);
}

void PrintVerdicts(const Report& report) {
  const auto count = [&](ExpectationResult result) {
    return std::ranges::count(report.expectations, result, &ExpectationReport::result);
  };
  const auto unreached = count(ExpectationResult::NotReached);
  fmt::print("expectations        {} ok, {} FAILED{}\n", count(ExpectationResult::Held),
             count(ExpectationResult::Failed) + std::ssize(report.failedSteps),
             unreached > 0 ? fmt::format(", {} not reached", unreached) : "");
  for (const ExpectationReport& expectation : report.expectations)
    if (expectation.result == ExpectationResult::NotReached)
      fmt::print("{:<20}line {}: {}\n", "not reached", expectation.line, expectation.text);
  for (const std::string& failure : report.otherFailures) fmt::print("{:<20}{}\n", "FAILED", failure);
}

}  // namespace

void EnterPassTimes(FlightTotals& totals, const Histogram& passes) {
  const auto microseconds = [](Nanoseconds time) { return static_cast<float>(time) / 1000.0F; };
  totals.medianPassMicroseconds = microseconds(passes.Percentile(50));
  totals.p99PassMicroseconds = microseconds(passes.Percentile(99));
  totals.longestPassMicroseconds = microseconds(passes.Longest());
}

void PrintSummary(const Report& report) {
  PrintPlugins(report.plugins);
  PrintLoadFailures(report);
  if (report.totals) PrintTotals(*report.totals, report.rate);
  PrintVerdicts(report);
}

}  // namespace sim
