// Whole flights, judged by their report.
#include <gtest/gtest.h>

#include "SimulatorRun.h"

namespace {

TEST(Run, FolderWithoutPluginsFailsTheFlight) {
  const SimulatorFolder folder;
  const SimulatorRun run = folder.Fly(1);
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.report.at("result"), "failed");
  EXPECT_EQ(run.report.at("failures"), nlohmann::json::array({"there was no plugin"}));
}

// What comes behind the fifth frame is not reached.
TEST(Run, ExceptionEndsTheFlightAndLeavesAReport) {
  const SimulatorFolder folder;
  folder.Install("thrower", "thrower/64/lin.vyp");
  const SimulatorRun run = folder.FlyFile(20, {{"expectations",
                                                {{{"frame", 1}, {"pluginCount", 2}},
                                                 {{"frame", 6}, {"pluginCount", 2}},
                                                 {{"after", "shutdown"}, {"pluginCount", 0}}}}});
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_EQ(run.report.at("result"), "exception");
  EXPECT_EQ(run.report.at("culprit").at("frame"), 5);
  EXPECT_NE(run.report.at("culprit").at("message").get<std::string>().find("thrown on purpose"),
            std::string::npos);
  std::vector<std::string> results;
  for (const auto& expectation : run.report.at("expectations")) results.push_back(expectation.at("result"));
  EXPECT_EQ(results, (std::vector<std::string>{"held", "not reached", "not reached"}));
}

}  // namespace
