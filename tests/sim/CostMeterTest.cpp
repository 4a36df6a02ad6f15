// Whom time is charged to, with a clock that the tests turn.
#include "report/CostMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "report/Costs.h"

namespace {

using sim::CostMeter;
using sim::MeteredCall;
using sim::Nanoseconds;

constexpr int kMessage = 7;
constexpr int kFlightLoop = 8;
constexpr int kDataRef = 23;
constexpr Nanoseconds kMillisecond = 1'000'000;

class CostMeterTest : public testing::Test {
 protected:
  CostMeterTest() {
    for (std::size_t kind = 0; kind < sim::kCallKinds; ++kind)
      std::ranges::copy("kind " + std::to_string(kind), block->kindNames[kind].data());
  }

  static MeteredCall Call(int plugin, int kind, const char* path) {
    return {plugin, kind, kind > sim::kStart ? path : "", kind > sim::kStart ? path : "", path};
  }

  void Begin(int plugin, int kind, const char* path) { meter.BeginCall(Call(plugin, kind, path), now); }
  void Pass(Nanoseconds milliseconds) { now += milliseconds * kMillisecond; }
  void End() { meter.EndCall(now); }

  // A call that takes so long.
  void Make(int plugin, int kind, const char* path, Nanoseconds milliseconds) {
    Begin(plugin, kind, path);
    Pass(milliseconds);
    End();
  }

  template <class Part>
  void InFrame(int frame, const Part& part) {
    meter.BeginFrame(frame, now);
    part();
    meter.EndFrame(now);
  }

  void Load(int plugin, const char* path) {
    Make(plugin, sim::kOpening, path, 2);
    Make(plugin, sim::kStart, path, 3);
    Make(plugin, sim::kEnable, path, 4);
  }

  sim::PluginReport Cost(const std::string& path) {
    sim::Report report;
    sim::EnterCosts(*block, report);
    const auto found = std::ranges::find(report.plugins, path, &sim::PluginReport::path);
    if (found == report.plugins.end()) throw std::out_of_range(path);
    return *found;
  }

  static sim::CallCost Kind(const sim::PluginReport& plugin, int kind) {
    return plugin.cost->kinds.at("kind " + std::to_string(kind));
  }

  sim::SharedCostBlock block = sim::MapCostBlock();
  Nanoseconds now = 1'000'000'000'000;
  CostMeter meter{*block, now};
};

TEST_F(CostMeterTest, CallInsideACallBelongsToItsOwnPlugin) {
  Load(1, "caller");
  Load(2, "owner");
  InFrame(1, [&] {
    Begin(1, kFlightLoop, "caller");
    Pass(5);
    Begin(2, kDataRef, "owner");
    Pass(20);
    Make(1, kMessage, "caller", 7);
    Pass(10);
    End();
    Pass(1);
    End();
  });
  const sim::PluginReport caller = Cost("caller");
  const sim::PluginReport owner = Cost("owner");
  EXPECT_DOUBLE_EQ(Kind(caller, kFlightLoop).longestMs, 6);
  EXPECT_DOUBLE_EQ(Kind(caller, kMessage).longestMs, 7);
  EXPECT_DOUBLE_EQ(Kind(owner, kDataRef).longestMs, 30);
  EXPECT_DOUBLE_EQ(caller.cost->total.longestMs, 13);
  EXPECT_DOUBLE_EQ(owner.cost->total.longestMs, 30);
  EXPECT_EQ(caller.cost->total.calls, 5);
}

TEST_F(CostMeterTest, FiguresArePerFrameInWhichThePluginWasThere) {
  InFrame(1, [&] { Load(1, "late"); });  // there from frame 1 on
  for (int frame = 2; frame <= 99; ++frame) InFrame(frame, [] {});
  InFrame(100, [&] {
    Make(1, kFlightLoop, "late", 20);
    Make(1, kFlightLoop, "late", 30);
  });
  Make(1, sim::kClosing, "late", 1);
  InFrame(101, [] {});
  const sim::PluginReport plugin = Cost("late");
  const sim::CallCost& total = plugin.cost->total;
  EXPECT_DOUBLE_EQ(total.meanMs, 0.5);
  EXPECT_DOUBLE_EQ(total.medianMs, 0);
  EXPECT_DOUBLE_EQ(total.p99Ms, 0);
  EXPECT_DOUBLE_EQ(total.longestMs, 50);
  EXPECT_EQ(total.longestFrame, 100);
  EXPECT_EQ(Kind(plugin, kFlightLoop).calls, 2);
  EXPECT_DOUBLE_EQ(Kind(plugin, kFlightLoop).longestMs, 50);
  EXPECT_DOUBLE_EQ(total.totalMs, 50);
}

TEST_F(CostMeterTest, LoadingBelongsToNoFrameAndIsMeasuredAnewByAReload) {
  InFrame(1, [&] {
    Load(1, "plugin");
    Make(1, kFlightLoop, "plugin", 1);
  });
  EXPECT_DOUBLE_EQ(Cost("plugin").loadMs, 9);
  Make(1, sim::kEnable, "plugin", 50);  // by another plugin: no longer a part of loading
  InFrame(2, [&] {
    Make(1, sim::kClosing, "plugin", 1);
    Make(1, sim::kOpening, "plugin", 1);
    Make(1, sim::kStart, "plugin", 1);
    Make(1, sim::kEnable, "plugin", 1);
  });
  const sim::PluginReport plugin = Cost("plugin");
  EXPECT_DOUBLE_EQ(plugin.loadMs, 3);
  EXPECT_DOUBLE_EQ(plugin.cost->total.longestMs, 1);
  EXPECT_EQ(Kind(plugin, sim::kEnable).calls, 3);
  EXPECT_DOUBLE_EQ(Kind(plugin, sim::kEnable).longestMs, 50);
  EXPECT_DOUBLE_EQ(Kind(plugin, sim::kOpening).meanMs, 1.5);
}

TEST_F(CostMeterTest, PluginIsItsModuleAndNotItsNumber) {
  Load(1, "first");
  InFrame(1, [&] { Make(1, kFlightLoop, "first", 1); });
  Load(1, "second");
  Load(2, "first");
  InFrame(2, [&] {
    Make(1, kFlightLoop, "second", 2);
    Make(2, kFlightLoop, "first", 4);
  });
  EXPECT_DOUBLE_EQ(Cost("first").cost->total.longestMs, 4);
  EXPECT_DOUBLE_EQ(Cost("second").cost->total.longestMs, 2);
  EXPECT_EQ(Cost("first").name, "first");
}

TEST_F(CostMeterTest, ModuleThatNeverStartedIsNoPlugin) {
  Make(1, sim::kOpening, "broken", 5);
  sim::Report report;
  sim::EnterCosts(*block, report);
  EXPECT_TRUE(report.plugins.empty());
  EXPECT_EQ(report.callsIntoOthers, 1);
}

TEST_F(CostMeterTest, BudgetIsExceededByAPluginsFrameAndNotByACall) {
  block->budget = 10 * kMillisecond;
  Load(1, "even");
  Load(2, "over");
  for (int frame = 1; frame <= 3; ++frame)
    InFrame(frame, [&] {
      Make(1, kFlightLoop, "even", 10);
      Make(2, kFlightLoop, "over", frame >= 2 ? 6 : 1);
      Make(2, kMessage, "over", 6);
    });
  sim::Report report;
  sim::EnterCosts(*block, report);
  EXPECT_EQ(
      report.otherFailures,
      std::vector<std::string>{"over (over) took more than 10 ms in 2 frames, first in frame 2; 12.0000 ms "
                               "in frame 2"});
}

TEST_F(CostMeterTest, CallsNestedTooDeepCountWithTheInnermostThatIsKept) {
  const int depth = sim::kMostOpenCalls + 1000;
  Load(1, "deep");
  InFrame(1, [&] {
    for (int call = 0; call < depth; ++call) {
      Begin(1, kDataRef, "deep");
      Pass(1);
    }
    for (int call = 0; call < depth; ++call) End();
    Make(1, kFlightLoop, "deep", 3);
  });
  EXPECT_EQ(Kind(Cost("deep"), kDataRef).calls, sim::kMostOpenCalls);
  EXPECT_DOUBLE_EQ(Kind(Cost("deep"), kDataRef).longestMs, depth);
  EXPECT_DOUBLE_EQ(Kind(Cost("deep"), kFlightLoop).longestMs, 3);
}

TEST_F(CostMeterTest, PluginsBeyondTheLastShareIt) {
  std::vector<std::string> paths(sim::kMostPlugins + 10);
  for (std::size_t plugin = 0; plugin < paths.size(); ++plugin) {
    paths[plugin] = "plugin " + std::to_string(plugin);
    Make(static_cast<int>(plugin) + 1, sim::kStart, paths[plugin].c_str(), 1);
  }
  EXPECT_EQ(Cost("(all further plugins)").cost->total.calls, 11);
  EXPECT_EQ(Cost("plugin 254").cost->total.calls, 1);
}

TEST_F(CostMeterTest, TimeThatTheSimulatorTookIsNobodysCost) {
  Load(1, "plugin");
  InFrame(1, [&] {
    Begin(1, kFlightLoop, "plugin");
    Pass(2);
    Make(1, kDataRef, "plugin", 1);
    Pass(100);
    meter.Excuse(now);
    Pass(3);
    End();
  });
  EXPECT_DOUBLE_EQ(Kind(Cost("plugin"), kFlightLoop).longestMs, 5);
}

}  // namespace
