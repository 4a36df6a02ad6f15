// Which of many plugins makes a flight fail, found by whole flights.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>

#include "SimulatorRun.h"

namespace {

class BisectTest : public testing::Test {
 protected:
  // So many plugins that do nothing wrong, with these among them.
  void Install(int count, const std::vector<std::string>& others) const {
    for (int plugin = 0; plugin < count; ++plugin) InstallMember("member" + std::to_string(1000 + plugin));
    for (const std::string& other : others) InstallMember(other);
  }
  void InstallMember(const std::string& name) const { folder.Install("member", name + "/64/lin.vyp"); }

  SimulatorRun Bisect(const std::vector<std::string>& further = {}) const {
    std::vector<std::string> arguments{"bisect", "--system", folder.Path(""), "--frames", "10",
                                       "--rate", "60"};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return RunSimulator(arguments);
  }

  // A flight that fails when the log has the line of the noisy plugin.
  std::string QuietFlight(const nlohmann::json& more = nlohmann::json::array()) const {
    nlohmann::json expectations = {{{"after", "end"}, {"logLacks", "noise"}}};
    expectations.insert(expectations.end(), more.begin(), more.end());
    std::ofstream(folder.Path("quiet.json")) << nlohmann::json{{"expectations", expectations}};
    return folder.Path("quiet.json");
  }

  SimulatorFolder folder;
};

bool Has(const SimulatorRun& run, const std::string& text) {
  return run.output.find(text) != std::string::npos;
}

int Flights(const SimulatorRun& run) {
  std::smatch match;
  if (!std::regex_search(run.output, match, std::regex("\n([0-9]+) flights? in "))) return -1;
  return std::stoi(match[1]);
}

TEST_F(BisectTest, FindsOneCulpritAmongFifty) {
  Install(49, {"culprit"});
  const SimulatorRun run = Bisect();
  EXPECT_EQ(run.exitCode, 0) << run.output << run.error;
  EXPECT_TRUE(Has(
      run, "This plugin makes the flight fail:\n    org.skyvora.test.culprit  Resources/plugins/culprit\n"))
      << run.output;
  EXPECT_TRUE(Has(run, "Without it the flight does not fail so"));
  EXPECT_LE(Flights(run), 10) << run.output;
}

TEST_F(BisectTest, FindsAPairThatFailsOnlyTogether) {
  Install(48, {"left", "right"});
  const SimulatorRun run = Bisect();
  EXPECT_EQ(run.exitCode, 0) << run.output << run.error;
  EXPECT_TRUE(Has(run,
                  "none of them can be left out:\n    org.skyvora.test.left  Resources/plugins/left\n"
                  "    org.skyvora.test.right  Resources/plugins/right\n"))
      << run.output;
  EXPECT_LE(Flights(run), 18) << run.output;
}

// Most flights with fewer plugins fail because of the other expectation.
TEST_F(BisectTest, LooksForTheFailureAndNotForAnyOther) {
  Install(8, {"noisy"});
  const std::string flight = QuietFlight({{{"after", "end"}, {"pluginCount", 10}}});
  const SimulatorRun run = Bisect({"--flight", flight});
  EXPECT_EQ(run.exitCode, 0) << run.output << run.error;
  EXPECT_TRUE(Has(run, "    org.skyvora.test.noisy  ")) << run.output;
}

TEST_F(BisectTest, LooksForTheChosenExpectation) {
  Install(4, {"noisy"});
  const std::string flight =
      QuietFlight({{{"after", "end"}, {"plugin", "org.skyvora.test.member1001"}, {"is", "absent"}}});
  const SimulatorRun noise = Bisect({"--flight", flight, "--expectation", "noise"});
  EXPECT_TRUE(Has(noise, "    org.skyvora.test.noisy  ")) << noise.output;
  const SimulatorRun member = Bisect({"--flight", flight, "--expectation", "member1001"});
  EXPECT_TRUE(Has(member, "    org.skyvora.test.member1001  ")) << member.output;
}

TEST_F(BisectTest, FindsWhoIsOverTheBudget) {
  Install(4, {"slow"});
  const SimulatorRun run = Bisect({"--cost-budget", "25"});
  EXPECT_EQ(run.exitCode, 0) << run.output << run.error;
  EXPECT_TRUE(Has(run, "    org.skyvora.test.slow  ")) << run.output;
}

TEST_F(BisectTest, KeepsWhatItIsToldTo) {
  Install(3, {"left", "right"});
  const SimulatorRun run = Bisect({"--keep", "org.skyvora.test.l*"});
  EXPECT_TRUE(Has(run, "all 4 plugins take part")) << run.output;
  EXPECT_TRUE(Has(run, "This plugin makes the flight fail:\n    org.skyvora.test.right  ")) << run.output;
  const SimulatorRun both = Bisect({"--keep", "*/left", "--keep", "*/right"});
  EXPECT_EQ(both.exitCode, 1);
  EXPECT_TRUE(Has(both, "The flight fails without any of the plugins as well.")) << both.output;
}

TEST_F(BisectTest, SaysWhenThereIsNothingToFind) {
  Install(4, {});
  const SimulatorRun passes = Bisect();
  EXPECT_EQ(passes.exitCode, 1);
  EXPECT_TRUE(Has(passes, "The flight does not fail.")) << passes.output;
  EXPECT_EQ(Flights(passes), 1);
}

TEST_F(BisectTest, SaysWhenTheFailureIsNotReproducible) {
  Install(7, {"once"});
  const SimulatorRun run = Bisect();
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(Has(run, "The failure is not reproducible")) << run.output;
}

TEST_F(BisectTest, RefusesWhatRunRefuses) {
  Install(1, {});
  const SimulatorRun run = Bisect({"--flight", "none.json"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_NE(run.error.find("none.json"), std::string::npos) << run.error;
}

}  // namespace
