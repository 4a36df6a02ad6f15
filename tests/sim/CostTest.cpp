// What whole flights say of their plugins' costs.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <utility>

#include "SimulatorRun.h"

namespace {

using nlohmann::json;

json PluginOf(const json& report, const std::string& signature) {
  for (const json& plugin : report.at("plugins"))
    if (plugin.at("signature") == signature) return plugin;
  throw std::out_of_range(signature);
}

class CostTest : public testing::Test {
 protected:
  CostTest() {
    folder.Install("reader", "reader/64/lin.vyp");
    folder.Install("sleeper", "sleeper/64/lin.vyp");
  }
  SimulatorFolder folder;
};

// The reader reads it in its flight loop in frame 9, and waits for it: it is not to blame.
TEST_F(CostTest, NamesThePluginTheKindOfCallAndTheFrame) {
  const SimulatorRun run = folder.Fly(20, {"--cost"});
  ASSERT_EQ(run.exitCode, 0) << run.output;
  const json sleeper = PluginOf(run.report, "org.skyvora.test.sleeper").at("cost");
  const json drawing = sleeper.at("kinds").at("draw callback");
  EXPECT_EQ(drawing.at("calls"), 20);
  EXPECT_EQ(drawing.at("longestFrame"), 7);
  EXPECT_GE(drawing.at("longestMs"), 20.0);
  EXPECT_GE(drawing.at("meanMs"), 1.0);
  EXPECT_LT(drawing.at("medianMs"), 10.0);
  EXPECT_EQ(sleeper.at("kinds").at("dataref").at("longestFrame"), 9);
  EXPECT_GE(sleeper.at("kinds").at("dataref").at("longestMs"), 30.0);

  const json reader = PluginOf(run.report, "org.skyvora.test.reader").at("cost");
  EXPECT_EQ(reader.at("kinds").at("flight loop").at("calls"), 20);
  EXPECT_LT(reader.at("longestMs"), 30.0);

  // The dearest stands above the other in the table.
  const std::size_t table = run.output.find("costs per frame of 16.67 ms (60 Hz)");
  ASSERT_NE(table, std::string::npos);
  EXPECT_LT(run.output.find("\nSleeper", table), run.output.find("\nReader", table));
  EXPECT_NE(run.output.find("  draw callback", table), std::string::npos);
}

// The sleeper's 50 ms slow the third of a second down that is flown.
TEST_F(CostTest, SpeedIsMeasuredByTheWallAndTheLibrarysPartByFramesNowAndThen) {
  const json totals = folder.Fly(20, {}).report.at("totals");
  EXPECT_GT(totals.at("timesRealTime"), 0.0);
  EXPECT_LE(totals.at("timesRealTime"), 20 / 60.0 / 0.05);
  EXPECT_GT(totals.at("libraryShare"), 0.0);
  EXPECT_LE(totals.at("libraryShare"), 1.0);
}

TEST_F(CostTest, PluginOverTheBudgetFailsTheFlight) {
  EXPECT_EQ(folder.Fly(8, {"--cost-budget", "5000"}).exitCode, 0);
  const SimulatorRun run = folder.Fly(8, {"--cost-budget", "15"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(
      run.output.find("Sleeper (org.skyvora.test.sleeper) took more than 15 ms in 1 frame, first in frame 7"),
      std::string::npos)
      << run.output;
}

// ---- The trace of the demo flight ----

struct Interval {
  double begin;
  double end;
};

json ReadTrace(const std::string& file) { return json::parse(std::ifstream(file)); }

std::vector<Interval> IntervalsOf(const json& trace, const std::string& category) {
  std::vector<Interval> intervals;
  for (const json& event : trace) {
    if (event.at("ph") != "X" || event.at("cat") != category) continue;
    const double begin = event.at("ts");
    intervals.push_back({begin, begin + event.at("dur").get<double>()});
  }
  return intervals;
}

// Whether any two of them lie one inside the other or apart: calls on one thread cannot overlap otherwise.
bool AreNested(std::vector<Interval> intervals) {
  constexpr double kRounding = 0.0005;  // half of a nanosecond, in microseconds
  std::ranges::sort(intervals, [](const Interval& left, const Interval& right) {
    return std::pair(left.begin, -left.end) < std::pair(right.begin, -right.end);
  });
  std::vector<double> ends;
  for (const Interval& interval : intervals) {
    while (!ends.empty() && ends.back() <= interval.begin + kRounding) ends.pop_back();
    if (!ends.empty() && interval.end > ends.back() + kRounding) return false;
    ends.push_back(interval.end);
  }
  return true;
}

// By plugin and kind. Modules that did not start, which are known by their path alone, are not counted.
using Counts = std::map<std::pair<std::string, std::string>, std::int64_t>;

Counts CountTraced(const json& trace) {
  std::map<int, std::string> names;
  for (const json& event : trace)
    if (event.at("name") == "thread_name") names[event.at("tid")] = event.at("args").at("name");
  Counts counts;
  for (const json& event : trace)
    if (event.at("ph") == "X" && event.at("cat") == "call" && !names.at(event.at("tid")).starts_with('/'))
      ++counts[{names.at(event.at("tid")), event.at("name")}];
  return counts;
}

Counts CountReported(const json& report) {
  Counts counts;
  for (const json& plugin : report.at("plugins"))
    for (const auto& [kind, cost] : plugin.at("cost").at("kinds").items())
      counts[{plugin.at("name"), kind}] = cost.at("calls");
  return counts;
}

// The last event of a name in a row.
json LastOf(const json& trace, const std::string& rowName, const std::string& name) {
  json last;
  int row = -1;
  for (const json& event : trace)
    if (event.at("name") == "thread_name" && event.at("args").at("name") == rowName) row = event.at("tid");
  for (const json& event : trace)
    if (event.at("ph") == "X" && event.at("tid") == row && event.at("name") == name) last = event;
  return last;
}

SimulatorRun FlyTheDemo(const std::vector<std::string>& further) {
  std::vector<std::string> arguments{"run", "--system", VYRA_SIM_EXAMPLE_FOLDER, "--frames", "900", "--rate",
                                     "60",  "--flight", VYRA_SIM_DEMO_FLIGHT};
  arguments.insert(arguments.end(), further.begin(), further.end());
  return RunSimulator(arguments);
}

TEST(Trace, OfTheDemoFlightIsNestedAndHasTheCallsOfTheCostTable) {
  const SimulatorFolder folder;
  const std::string file = folder.Path("trace.json");
  const SimulatorRun run = FlyTheDemo({"--trace", file});
  ASSERT_EQ(run.exitCode, 0) << run.output;
  const json trace = ReadTrace(file);
  EXPECT_EQ(CountTraced(trace), CountReported(run.report));

  const std::vector<Interval> frames = IntervalsOf(trace, "frame");
  EXPECT_EQ(frames.size(), 900U);
  std::vector<Interval> all = IntervalsOf(trace, "call");
  all.insert(all.end(), frames.begin(), frames.end());
  EXPECT_TRUE(AreNested(all));
  const auto hasMark = [&](const std::string& name) {
    return std::ranges::any_of(trace, [&](const json& event) {
      return event.at("ph") == "i" && event.at("name").get<std::string>().starts_with(name);
    });
  };
  EXPECT_TRUE(hasMark("all plugins reloaded"));
  EXPECT_TRUE(hasMark("aircraft Trainer loaded"));
}

TEST(Trace, OfARangeHasTheseFramesAlone) {
  const SimulatorFolder folder;
  const std::string file = folder.Path("trace.json");
  ASSERT_EQ(FlyTheDemo({"--trace", file, "--trace-frames", "100:200"}).exitCode, 0);
  const json trace = ReadTrace(file);
  EXPECT_EQ(IntervalsOf(trace, "frame").size(), 101U);
  for (const json& event : trace) {
    if (event.value("cat", "") != "call") continue;
    EXPECT_GE(event.at("args").at("frame"), 100);
    EXPECT_LE(event.at("args").at("frame"), 200);
  }
}

TEST(Trace, MarksModulesThatCouldNotBeLoaded) {
  const SimulatorFolder folder;
  const std::string module = folder.Write("no module\n", "text.vyp");
  const std::string file = folder.Path("trace.json");
  folder.Fly(1, {"--trace", file});
  const json trace = ReadTrace(file);
  EXPECT_TRUE(std::ranges::any_of(trace, [&](const json& event) {
    return event.at("ph") == "i" && event.at("name") == "not loaded: " + module;
  }));
}

TEST(Trace, OfAFlightThatAPluginEndsIsWholeAndShowsThatCall) {
  const SimulatorFolder folder;
  folder.Install("faulty", "faulty/64/lin.vyp");
  const std::string file = folder.Path("trace.json");
  for (const char* const fault : {"null@loop", "exception@loop"}) {
    setenv("VYRA_TEST_FAULT", fault, 1);
    const SimulatorRun run = folder.Fly(20, {"--trace", file});
    EXPECT_EQ(run.exitCode, 3);
    const json trace = ReadTrace(file);
    const json frame = run.report.at("culprit").at("frame");
    EXPECT_EQ(LastOf(trace, "Faulty", "flight loop").at("args").at("frame"), frame);
    EXPECT_TRUE(LastOf(trace, "frames", "frame " + frame.dump()).is_object());
    EXPECT_TRUE(AreNested(IntervalsOf(trace, "call")));
  }
}

}  // namespace
