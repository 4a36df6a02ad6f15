// The log by lines: whose they are, which are warnings, and what a filter leaves of them.
#include "window/LogLines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using sim::FilteredLog;
using sim::LogFilter;
using sim::LogLines;
using sim::LogPassage;

class LogLinesTest : public testing::Test {
 protected:
  void Write(const char* writer, const std::string& added) {
    if (passages.empty() || passages.back().writer != writer) passages.push_back({text.size(), writer});
    text += added;
  }
  void Follow() {
    lines.Follow(text, passages);
    filtered.Follow(text, lines, filter);
  }

  std::string TextOf(std::uint32_t line) const {
    return text.substr(lines.Line(line).begin, lines.Line(line).length);
  }
  std::vector<std::string> Shown() const {
    std::vector<std::string> shown;
    for (const std::uint32_t line : filtered.Shown()) shown.push_back(TextOf(line));
    return shown;
  }
  const std::string& WriterOf(std::size_t line) const { return lines.Writers()[lines.Line(line).writer]; }

  using Lines = std::vector<std::string>;
  std::string text;
  std::vector<LogPassage> passages;
  LogLines lines;
  FilteredLog filtered;
  LogFilter filter;
};

constexpr const char* kSimulator = "";
constexpr const char* kClock = "/plugins/clock.vyp";
constexpr const char* kMap = "/plugins/map.vyp";

TEST_F(LogLinesTest, BelongToWhoeverBeganThem) {
  Write(kSimulator, "Skyvora begins\n");
  Write(kClock, "clock: ticks\nclock: half a");
  Write(kMap, " line\nmap: drawn\n");
  Write(kSimulator, "\n");
  Follow();
  ASSERT_EQ(lines.Count(), 5U);
  EXPECT_EQ(WriterOf(0), kSimulator);
  EXPECT_EQ(WriterOf(1), kClock);
  EXPECT_EQ(WriterOf(2), kClock);
  EXPECT_EQ(TextOf(2), "clock: half a line");
  EXPECT_EQ(WriterOf(3), kMap);
  EXPECT_EQ(WriterOf(4), kSimulator);
}

TEST_F(LogLinesTest, LineIsTakenInOnceItIsWhole) {
  Write(kClock, "clock: first\nclock: sec");
  Follow();
  EXPECT_EQ(lines.Count(), 1U);
  Write(kClock, "ond\n");
  Follow();
  Follow();
  EXPECT_EQ(Shown(), (Lines{"clock: first", "clock: second"}));
}

TEST_F(LogLinesTest, FilterTakesTextInAnyCaseAndOnePluginAndWarnings) {
  Write(kSimulator, "Failed: no such MAP\n");
  Write(kMap, "[Map]: zoom out of range\nmap: zoom 3\n");
  Write(kClock, "clock: on the map\n");
  filter.text = "mAp";
  Follow();
  EXPECT_EQ(Shown().size(), 4U);
  filter.takesWarningsAlone = true;
  Follow();
  EXPECT_EQ(Shown(), (Lines{"Failed: no such MAP", "[Map]: zoom out of range"}));
  EXPECT_EQ(lines.CountWarnings(), 2);
  filter = {.text = "", .writer = lines.Line(1).writer};
  Follow();
  EXPECT_EQ(Shown(), (Lines{"[Map]: zoom out of range", "map: zoom 3"}));
  filter.text = "zoom 3!";
  Follow();
  EXPECT_EQ(Shown(), Lines{});
}

TEST_F(LogLinesTest, FilterGoesOnWithWhatIsWrittenLater) {
  filter.text = "tick";
  Write(kClock, "clock: tick 1\nclock: silence\n");
  Follow();
  Write(kClock, "clock: tick 2\n");
  Follow();
  EXPECT_EQ(Shown(), (Lines{"clock: tick 1", "clock: tick 2"}));
}

// What one frame takes in is bounded, and nothing is lost at the bounds.
TEST_F(LogLinesTest, MillionLinesAreTakenInSliceBySlice) {
  constexpr int kLines = 1'000'000;
  for (int line = 0; line < kLines; ++line) text += "clock: " + std::to_string(line) + "\n";
  passages = {{0, kClock}};
  filter.text = "99999";
  std::size_t before = 0;
  do {
    before = lines.Count();
    Follow();
    ASSERT_LE(lines.Count() - before, LogLines::kMostAtOnce / std::string("clock: 0\n").size() + 1);
  } while (lines.Count() != before || !filtered.IsUpToDate(lines));
  EXPECT_EQ(lines.Count(), kLines);
  EXPECT_EQ(TextOf(kLines - 1), "clock: 999999");
  EXPECT_EQ(filtered.Shown().size(), 19U);
}

}  // namespace
