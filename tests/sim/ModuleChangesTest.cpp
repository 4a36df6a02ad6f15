// Modules that change while they fly.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "SimulatorRun.h"

namespace {

class WatchedModules : public testing::Test {
 protected:
  WatchedModules() {
    folder.Install("swapper", "swapper/64/lin.vyp");
    setenv("VYRA_TEST_OLD_FILE", place.c_str(), 1);
    setenv("VYRA_TEST_NEW_FILE", folder.Install("reader", "../../built/lin.vyp").c_str(), 1);
  }
  ~WatchedModules() override {
    unsetenv("VYRA_TEST_OLD_FILE");
    unsetenv("VYRA_TEST_NEW_FILE");
  }

  // In frame 3 the module of one plugin becomes that of another.
  SimulatorRun Fly(const std::vector<std::string>& arguments) const {
    return folder.FlyFile(20,
                          {{"steps", {{{"frame", 2}, {"broadcastEvent", 4}}}},
                           {"expectations",
                            {{{"after", "start"}, {"pluginCount", 3}},
                             {{"after", "end"}, {"plugin", "org.skyvora.test.reader"}, {"is", "enabled"}},
                             {{"after", "end"}, {"plugin", "org.skyvora.test.plain"}, {"is", "absent"}}}}},
                          arguments);
  }

  SimulatorFolder folder;
  std::string place = folder.Install("plain", "plain/64/lin.vyp");
};

int CountOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

bool Has(const SimulatorRun& run, const std::string& text) { return CountOf(run.output, text) > 0; }

constexpr const char* kStep = "event 4 told to all plugins";
constexpr const char* kStart = "\nstart       /";

TEST_F(WatchedModules, AreReloadedAndTheFlightGoesOn) {
  const SimulatorRun run = Fly({"--watch"});
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_TRUE(Has(run,
                  "all plugins reloaded, as Resources/plugins/plain/64/lin.vyp changed: 2 plugins (Reader, "
                  "Swapper)\n"))
      << run.output;
  EXPECT_EQ(CountOf('\n' + run.output, kStart), 1);
  EXPECT_EQ(CountOf(run.output, kStep), 1);
}

TEST_F(WatchedModules, LetTheFlightStartOverWhereThatIsAskedFor) {
  const SimulatorRun run = Fly({"--watch=restart"});
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_TRUE(Has(run, "Resources/plugins/plain/64/lin.vyp changed: the flight starts over\n")) << run.output;
  EXPECT_EQ(CountOf('\n' + run.output, kStart), 2) << run.output;
  EXPECT_EQ(CountOf(run.output, kStep), 2);
  EXPECT_EQ(run.report.at("totals").at("frames"), 20);
  EXPECT_EQ(run.report.at("plugins").size(), 2U) << run.report;
}

TEST_F(WatchedModules, AreLeftAloneOtherwise) { EXPECT_FALSE(Has(Fly({}), "reloaded")); }

}  // namespace
