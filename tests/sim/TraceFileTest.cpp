#include "report/TraceFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "InputError.h"
#include "report/CostMeter.h"

namespace {

using nlohmann::json;
using sim::CostMeter;
using sim::TraceFile;

class TraceFileTest : public testing::Test {
 protected:
  TraceFileTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vyra-trace-XXXXXX").string();
    folder = mkdtemp(pattern.data());
    block->kindNames[8] = {"flight loop"};
    block->isTracing = true;
    block->lastTracedFrame = 1'000'000;
  }
  ~TraceFileTest() override { std::filesystem::remove_all(folder); }

  std::string FileName() const { return (folder / "trace.json").string(); }
  std::string Text() const {
    std::ifstream file(FileName());
    return {std::istreambuf_iterator<char>(file), {}};
  }
  // What a viewer shows of a kind of event.
  json Events(const std::string& phase) const {
    json found = json::array();
    for (const json& event : json::parse(Text()))
      if (event.at("ph") == phase) found.push_back(event);
    return found;
  }

  // A frame of 100 us in which a plugin's flight loop runs from 10 us to 30.5 us.
  void Fly(CostMeter& meter, int frame, const char* name = "Plugin") {
    meter.BeginFrame(frame, now);
    meter.BeginCall({1, 8, name, "signature", "path"}, now + 10'000);
    meter.EndCall(now + 30'500);
    meter.EndFrame(now += 100'000);
  }

  std::filesystem::path folder;
  sim::SharedCostBlock block = sim::MapCostBlock();
  sim::Nanoseconds now = 5'000'000;
};

TEST_F(TraceFileTest, CallsAndFramesAreCompleteEventsInRowsWithNames) {
  TraceFile trace(FileName());
  CostMeter meter(*block, now);
  Fly(meter, 1, "Pl\"ug\xFFin");  // a name that is no UTF-8
  trace.WriteMark(*block, "step \"one\"\n", now);
  trace.End(*block);

  const json complete = Events("X");
  ASSERT_EQ(complete.size(), 2U);
  EXPECT_EQ(complete[0], json::parse(R"({"ph":"X","pid":1,"tid":1,"ts":10.0,"dur":20.5,"cat":"call",
                                         "name":"flight loop","args":{"frame":1}})"));
  EXPECT_EQ(complete[1], json::parse(R"({"ph":"X","pid":1,"tid":0,"ts":0.0,"dur":100.0,"cat":"frame",
                                         "name":"frame 1"})"));
  const json marks = Events("i");
  ASSERT_EQ(marks.size(), 1U);
  EXPECT_EQ(marks[0].at("name"), "step \"one\"\n");
  EXPECT_EQ(marks[0].at("ts"), 100.0);

  std::map<int, std::string> rows;
  for (const json& event : Events("M"))
    if (event.at("name") == "thread_name") rows[event.at("tid")] = event.at("args").at("name");
  EXPECT_EQ(rows, (std::map<int, std::string>{{0, "frames"}, {1, "Pl\"ug\uFFFDin"}}));
}

TEST_F(TraceFileTest, RangeOfFramesIsKept) {
  block->firstTracedFrame = 2;
  block->lastTracedFrame = 3;
  TraceFile trace(FileName());
  CostMeter meter(*block, now);
  Fly(meter, 0);
  for (int frame = 1; frame <= 5; ++frame) {
    Fly(meter, frame);
    trace.WriteMark(*block, "mark", now);
  }
  trace.End(*block);
  std::vector<int> framesOfCalls;
  for (const json& event : Events("X"))
    if (event.at("cat") == "call") framesOfCalls.push_back(event.at("args").at("frame"));
  EXPECT_EQ(framesOfCalls, (std::vector<int>{2, 3}));
  EXPECT_EQ(Events("i").size(), 1U);  // after frame 2; what comes after frame 3 is outside
}

TEST_F(TraceFileTest, CallsUnderWayAtACrashAreInTheTraceThatItsParentEnds) {
  TraceFile trace(FileName());
  CostMeter meter(*block, now);
  Fly(meter, 1);
  meter.BeginFrame(2, now);
  meter.BeginCall({1, 8, "Outer", "outer", "outer path"}, now + 1'000);
  meter.BeginCall({2, 8, "Inner", "inner", "inner path"}, now + 2'000);
  sim::CutShort(*block, now + 9'000);
  trace.End(*block);
  trace.End(*block);  // once is enough

  const json events = Events("X");
  ASSERT_EQ(events.size(), 5U);
  EXPECT_EQ(events[2].at("dur"), 7.0);
  EXPECT_EQ(events[3].at("dur"), 8.0);
  EXPECT_EQ(events[4].at("name"), "frame 2");
}

TEST_F(TraceFileTest, TraceThatNobodyEndedLacksItsBracketAlone) {
  const TraceFile trace(FileName());
  CostMeter meter(*block, now);
  Fly(meter, 1);
  trace.WriteEvents(*block);
  EXPECT_EQ(json::parse(Text() + "]").size(), 5U);
}

TEST_F(TraceFileTest, FileThatCannotBeOpenedIsNamed) {
  try {
    const TraceFile trace("/no/such/folder/trace.json");
    FAIL();
  } catch (const sim::InputError& error) {
    EXPECT_STREQ(error.what(), "cannot open the trace /no/such/folder/trace.json: No such file or directory");
  }
}

TEST_F(TraceFileTest, TraceThatCannotBeWrittenIsNoted) {
  EXPECT_THROW(TraceFile("/dev/full"), sim::InputError);
}

}  // namespace
