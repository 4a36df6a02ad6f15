// The model of the report: what events make of it, on their own and through a line of JSON.
#include <gtest/gtest.h>

#include "report/Event.h"
#include "report/ReportJson.h"

namespace {

using namespace sim;

Report ReportOf(const std::vector<Event>& events) {
  Report report;
  report.expectations.resize(2);
  for (const Event& event : events) ApplyEvent(report, EventFromLine(EventToLine(event)));
  SettleReport(report);
  return report;
}

const PluginTold kClock{.plugin = {.id = 1,
                                   .signature = "org.skyvora.clock",
                                   .name = "Clock",
                                   .path = "/s/clock.vyp",
                                   .state = "enabled",
                                   .loadMs = 1.5,
                                   .cost = {}}};

ExpectationSettled Settled(std::size_t index, bool holds, bool coversLoadFailures = false) {
  return {.index = index,
          .holds = holds,
          .found = "3",
          .lastHeld = holds ? 0 : 2,
          .coversLoadFailures = coversLoadFailures};
}

TEST(Report, PassesOnlyWhenNothingIsLeftOpen) {
  EXPECT_EQ(ReportOf({kClock, Settled(0, true), Settled(1, true)}).exitCode, kExitPassed);

  const Report unreached = ReportOf({kClock, Settled(1, true)});
  EXPECT_EQ(unreached.result, Result::Failed);
  EXPECT_EQ(WhyNotPassed(unreached), std::vector<std::string>{"1 expectation was not reached"});

  EXPECT_EQ(WhyNotPassed(ReportOf({Settled(0, true), Settled(1, true)})),
            std::vector<std::string>{"there was no plugin"});
}

// Two are expected; the third comes later.
TEST(Report, LoadFailureFailsAFlightThatDoesNotExpectIt) {
  const LoadFailed failure{{.path = "/s/a.vyp", .reason = "it is empty"}};
  const std::vector<Event> expected{kClock, failure, failure, Settled(0, true, true), Settled(1, true)};
  EXPECT_EQ(ReportOf(expected).exitCode, kExitPassed);

  std::vector<Event> more = expected;
  more.emplace_back(failure);
  EXPECT_EQ(WhyNotPassed(ReportOf(more)), std::vector<std::string>{"1 module could not be loaded"});
}

TEST(Report, FirstEndByAPluginCounts) {
  PluginEndedFlight crash{.result = Result::Crashed, .culprit = {}};
  crash.culprit.message = "SIGSEGV";
  crash.culprit.backtrace = {"one", "two"};
  PluginEndedFlight exception{.result = Result::Exception, .culprit = {}};
  exception.culprit.message = "thrown";
  const nlohmann::json report = ToJson(ReportOf({kClock, crash, exception}));
  EXPECT_EQ(report.at("result"), "crashed");
  EXPECT_EQ(report.at("exitCode"), kExitPluginEndedFlight);
  EXPECT_EQ(report.at("culprit").at("message"), "SIGSEGV");
  EXPECT_EQ(report.at("culprit").at("backtrace"), (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(report.at("expectations").at(0).at("result"), "not reached");
}

// Its state changes while what it cost is known already.
TEST(Report, PluginToldAgainKeepsItsCost) {
  PluginCost cost;
  cost.total.calls = 7;
  cost.kinds["flight loop"].longestFrame = 5;
  PluginTold disabled = kClock;
  disabled.plugin.state = "disabled";
  const nlohmann::json report = ToJson(ReportOf({kClock, CostTold{"/s/clock.vyp", cost}, disabled}));
  ASSERT_EQ(report.at("plugins").size(), 1U);
  EXPECT_EQ(report.at("plugins").at(0).at("state"), "disabled");
  EXPECT_EQ(report.at("plugins").at(0).at("cost").at("calls"), 7);
  EXPECT_EQ(report.at("plugins").at(0).at("cost").at("kinds").at("flight loop").at("longestFrame"), 5);
}

TEST(Report, TextsThatAreNoUtf8AreToldAllTheSame) {
  const Report report = ReportOf({LoadFailed{{.path = "/s/\xff.vyp", .reason = "line\nend"}}});
  EXPECT_EQ(report.loadFailures.at(0).path, "/s/\xef\xbf\xbd.vyp");
  EXPECT_EQ(report.loadFailures.at(0).reason, "line\nend");
}

}  // namespace
