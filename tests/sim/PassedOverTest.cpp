// Flying without some of the plugins.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

#include "SimulatorRun.h"

namespace {

// The plugins' states by path.
std::map<std::string, std::string> StatesOf(const SimulatorRun& run) {
  std::map<std::string, std::string> states;
  for (const auto& plugin : run.report.at("plugins")) states[plugin.at("path")] = plugin.at("state");
  return states;
}

class PassedOver : public testing::Test {
 protected:
  SimulatorFolder folder;
  std::string reader = folder.Install("reader", "reader/64/lin.vyp");
  std::string caller = folder.Install("caller", "caller/lin.vyp");
  std::string plain = folder.Install("plain", "plain.vyp");

  // The states with these arguments, as a letter each: reader, caller, plain.
  std::string StatesWith(const std::vector<std::string>& arguments) {
    const SimulatorRun run = folder.Fly(2, arguments);
    EXPECT_EQ(run.report.at("loadFailures").size(), 0U) << run.output;
    std::map<std::string, std::string> states = StatesOf(run);
    EXPECT_EQ(states.size(), 3U) << run.output;
    return {Letter(states[reader]), Letter(states[caller]), Letter(states[plain])};
  }
  static char Letter(const std::string& state) {
    return state == "passed over" ? '-' : state == "enabled" ? '+' : '?';
  }
};

TEST_F(PassedOver, PatternsFitNamesSignaturesAndPaths) {
  EXPECT_EQ(StatesWith({}), "+++");
  EXPECT_EQ(StatesWith({"--skip", "reader"}), "-++");
  EXPECT_EQ(StatesWith({"--skip", "org.skyvora.test.plain"}), "++-");
  EXPECT_EQ(StatesWith({"--skip", caller, "--skip", folder.Plugins("plain*")}), "+--");
  EXPECT_EQ(StatesWith({"--only", "org.skyvora.test.reader", "--only", "plain.vyp"}), "+-+");
  EXPECT_EQ(StatesWith({"--only", "*", "--skip", "*/reader"}), "-++");
}

TEST_F(PassedOver, SafeModeFliesWithPluginAdminAlone) {
  EXPECT_EQ(folder.Fly(2, {"--safe-mode"}).exitCode, 1);  // without any plugin
  const std::string admin = folder.Install("reader", "PluginAdmin/64/lin.vyp");
  const SimulatorRun run = folder.Fly(2, {"--safe-mode"});
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_EQ(
      StatesOf(run),
      (std::map<std::string, std::string>{
          {admin, "enabled"}, {reader, "passed over"}, {caller, "passed over"}, {plain, "passed over"}}));
}

// The aircraft and its scenery come in flight, and the plugins are reloaded.
TEST(PassedOverInTheDemo, AlsoThoseOfAircraftAndSceneryAndAfterAReload) {
  const SimulatorRun run =
      RunSimulator({"run", "--system", VYRA_SIM_EXAMPLE_FOLDER, "--frames", "900", "--rate", "60", "--flight",
                    VYRA_SIM_DEMO_FLIGHT, "--skip", "*/Coast/plugins/*", "--skip", "hello.vyp"});
  const std::string root = VYRA_SIM_EXAMPLE_FOLDER;
  const auto states = StatesOf(run);
  EXPECT_EQ(states.at(root + "/Resources/plugins/hello.vyp"), "passed over");
  EXPECT_EQ(states.at(root + "/Scenery/Coast/plugins/tide/lin.vyp"), "passed over");
  EXPECT_NE(states.at(root + "/Aircraft/Trainer/plugins/gauges/64/lin.vyp"), "passed over");
  EXPECT_NE(run.output.find("all plugins reloaded"), std::string::npos) << run.output;
  EXPECT_EQ(run.log.find("hello:"), std::string::npos) << run.log;
  EXPECT_EQ(run.report.at("loadFailures").size(), 0U) << run.output;
}

// The pattern that the next flight is told of, with all that a shell and a pattern could take amiss. It
// crashes in its start, so its signature is known to nobody.
TEST_F(PassedOver, CrashIsFollowedByTheArgumentThatFliesWithoutThePlugin) {
  const std::string faulty = folder.Install("faulty", "it's [odd]/64/lin.vyp");
  const std::vector<std::string> state{"--state", folder.Path("state")};
  setenv("VYRA_TEST_FAULT", "null@start", 1);
  const SimulatorRun crash = folder.Fly(9, state);
  EXPECT_EQ(crash.exitCode, 3) << crash.output;
  EXPECT_EQ(crash.report.at("culprit").at("path"), faulty);

  const SimulatorRun next = folder.Fly(9, state);
  const std::string advice = "to fly without that plugin: --skip 'Resources/plugins/it'\\''s \\[odd]'\n";
  EXPECT_NE(next.output.find(advice), std::string::npos) << next.output;
  const SimulatorRun without = folder.Fly(9, {"--skip", "Resources/plugins/it's \\[odd]"});
  EXPECT_EQ(without.exitCode, 0) << without.output;
  EXPECT_NE(without.output.find("passed over  " + faulty + "\n"), std::string::npos) << without.output;
  // Nor can it be flown to ask for it.
  EXPECT_EQ(folder.Fly(9, {"--skip", "org.skyvora.test.faulty"}).exitCode, 3);
  unsetenv("VYRA_TEST_FAULT");
}

}  // namespace
