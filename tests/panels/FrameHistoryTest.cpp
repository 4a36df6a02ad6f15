// What is kept of the last frames, with a clock that the tests turn.
#include "window/costs/FrameHistory.h"

#include <gtest/gtest.h>

#include <numeric>

#include "VYRAWatch.h"
#include "window/costs/FoldedCalls.h"

namespace {

using sim::FrameHistory;
using sim::FramePart;
using sim::Nanoseconds;
using sim::RecordedFrame;

constexpr const char* kClock = "/plugins/clock.vyp";
constexpr const char* kMap = "/plugins/map.vyp";

class FrameHistoryTest : public testing::Test {
 protected:
  void Part(FramePart part, Nanoseconds takes) {
    history.BeginPart(part, now);
    now += takes;
  }
  void Begin(const char* path, int kind = VYRA_CALL_FLIGHT_LOOP) {
    history.BeginCall({kind, "signature", path}, now);
  }
  void End() { history.EndCall(now); }
  void Pass(Nanoseconds time) { now += time; }

  // A frame of 10 + the time that its pass takes.
  template <class Inside>
  void Fly(int number, const Inside& pass) {
    Part(FramePart::Input, 3);
    Part(FramePart::Pass0, 0);
    pass();
    Part(FramePart::Pass1, 0);
    history.SetNumber(number, 100);
    Part(FramePart::Show, 7);
    Part(FramePart::Rest, 50);
  }

  const RecordedFrame& Last() const { return history.Frame(history.Count() - 1); }

  FrameHistory history;
  Nanoseconds now = 1000;
};

TEST_F(FrameHistoryTest, CallsNestAndEachTimeBelongsToTheInnermostOne) {
  Fly(1, [&] {
    Begin(kClock);
    Pass(10);
    Begin(kMap, VYRA_CALL_DATAREF);
    Pass(30);
    End();
    Pass(20);
    End();
    Begin(kMap);
    Pass(5);
    End();
  });
  ASSERT_EQ(history.Count(), 1U);
  EXPECT_EQ(Last().number, 1);
  EXPECT_EQ(Last().duration, 75U);
  EXPECT_EQ(Last().plugins, 65U);
  EXPECT_EQ(Last().byPlugin, (std::vector<std::uint32_t>{30, 35}));
  ASSERT_EQ(Last().calls.size(), 3U);
  EXPECT_EQ(Last().calls[0].duration, 60U);
  EXPECT_EQ(Last().calls[0].own, 30U);
  EXPECT_EQ(Last().calls[0].begin, 3U);
  EXPECT_EQ(Last().calls[1].depth, 1);
  EXPECT_EQ(Last().calls[1].own, 30U);
  EXPECT_EQ(Last().calls[2].depth, 0);
}

TEST_F(FrameHistoryTest, PartsAddUpToTheFrameAndTheRestBelongsToNone) {
  Fly(1, [&] { Pass(4); });
  Fly(2, [&] { Pass(90); });
  EXPECT_EQ(std::accumulate(Last().parts.begin(), Last().parts.end(), Nanoseconds{0}), Last().duration);
  EXPECT_EQ(Last().duration, 100U);
  EXPECT_EQ(Last().parts[static_cast<std::size_t>(FramePart::Pass0)], 90U);
  EXPECT_EQ(Last().sinceLast, 64U);
}

TEST_F(FrameHistoryTest, HeldFramesAreForgotten) {
  Fly(1, [] {});
  Part(FramePart::Input, 500);
  Begin(kClock, VYRA_CALL_WINDOW_MOUSE);
  Pass(8);
  End();
  Part(FramePart::Show, 20);
  Part(FramePart::Rest, 5);
  ASSERT_EQ(history.Count(), 1U);
  Fly(2, [] {});
  EXPECT_EQ(history.Count(), 2U);
  EXPECT_EQ(Last().plugins, 0U);
  EXPECT_EQ(Last().sinceLast, 0U);  // there is no rate to be told from
}

TEST_F(FrameHistoryTest, OldestFramesMakeRoom) {
  for (int number = 1; number <= 1000; ++number) Fly(number, [] {});
  EXPECT_EQ(history.Count(), FrameHistory::kFrames - 1);
  EXPECT_EQ(Last().number, 1000);
  EXPECT_EQ(history.Frame(0).number, 1002 - static_cast<int>(FrameHistory::kFrames));
}

TEST_F(FrameHistoryTest, MoreAndDeeperCallsThanAreKeptStillCount) {
  Fly(1, [&] {
    for (std::size_t call = 0; call < FrameHistory::kMostCalls + 10; ++call) {
      Begin(kClock);
      Pass(1);
      End();
    }
  });
  EXPECT_EQ(Last().calls.size(), FrameHistory::kMostCalls);
  EXPECT_EQ(Last().unrecordedCalls, 10);
  EXPECT_EQ(Last().plugins, FrameHistory::kMostCalls + 10);
  Fly(2, [&] {
    for (int depth = 0; depth < 400; ++depth) Begin(kMap);
    Pass(6);
    for (int depth = 0; depth < 400; ++depth) End();
  });
  EXPECT_EQ(Last().plugins, 6U);
  EXPECT_EQ(Last().calls.size(), FrameHistory::kMostDepth);
}

TEST_F(FrameHistoryTest, CallThatBeganBeforeAndFrameThatWasInterruptedAreNotCounted) {
  End();
  Part(FramePart::Input, 1);
  Part(FramePart::Pass0, 1);
  Begin(kClock);
  history.Interrupt();
  Pass(1'000'000);
  Part(FramePart::Show, 1);
  Part(FramePart::Rest, 1);
  EXPECT_EQ(history.Count(), 0U);
  Fly(2, [] {});
  EXPECT_EQ(Last().duration, 10U);
}

TEST_F(FrameHistoryTest, PluginGoesByItsPathUntilItsStartHasEnded) {
  history.BeginCall({VYRA_CALL_START, "", kClock}, now);
  history.EndCall(now);
  EXPECT_EQ(history.Plugins().at(0).signature, kClock);
  Begin(kClock);
  End();
  ASSERT_EQ(history.Plugins().size(), 1U);
  EXPECT_EQ(history.Plugins()[0].signature, "signature");
}

TEST_F(FrameHistoryTest, AlikeCallsInARowFoldUnlessTheyHoldOthers) {
  Fly(1, [&] {
    Begin(kClock);
    for (int access = 0; access < 3; ++access) {
      Begin(kMap, VYRA_CALL_DATAREF);
      Pass(2);
      End();
    }
    End();
    for (int loop = 0; loop < 2; ++loop) {  // as alike, with a call inside each
      Begin(kClock);
      Begin(kMap, VYRA_CALL_DATAREF);
      End();
      End();
    }
    Begin(kClock);
    End();
  });
  const std::vector<sim::FoldedCall> folded = sim::FoldCalls(Last().calls);
  std::vector<int> times;
  times.reserve(folded.size());
  for (const sim::FoldedCall& call : folded) times.push_back(call.times);
  EXPECT_EQ(times, (std::vector<int>{1, 3, 1, 1, 1, 1, 1}));
  EXPECT_EQ(folded[1].duration, 6U);
}

}  // namespace
