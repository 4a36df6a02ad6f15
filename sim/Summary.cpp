// Printing the report.
#include "Summary.h"

#include <fmt/format.h>

#include <algorithm>

namespace sim {
namespace {

// The smallest time that at least this share of all the sorted times do not exceed.
float Percentile(const std::vector<float>& sorted, size_t percent) {
  if (sorted.empty()) return 0.0F;
  return sorted[(sorted.size() * percent + 99) / 100 - 1];
}

void PrintPlugins(const std::vector<PluginInfo>& plugins) {
  fmt::print("\n  ID  enabled  {:<24}signature\n", "name");
  for (const PluginInfo& plugin : plugins)
    fmt::print("{:>4}  {:<7}  {:<24}{}\n", plugin.id, plugin.enabled ? "yes" : "no", plugin.name,
               plugin.signature.empty() ? "-" : plugin.signature);
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

}  // namespace

void PrintSummary(FlightReport& report) {
  PrintPlugins(report.plugins);
  std::vector<float>& times = report.passMicroseconds;
  std::ranges::sort(times);
  PrintActivity(report.activity);
  fmt::print("\npasses flown        {} (frames: {} at {:g} Hz, {:.2f} s simulated)\n", report.passes,
             report.frames, report.rate, report.frames / report.rate);
  fmt::print("wall time per pass  median {:.2f} us, 99th percentile {:.2f} us, longest {:.2f} us\n",
             Percentile(times, 50), Percentile(times, 99), Percentile(times, 100));
  fmt::print("log warnings        {}\n", report.warnings);
  fmt::print("expectations        {} ok, {} FAILED\n", report.held, report.failures);
}

}  // namespace sim
