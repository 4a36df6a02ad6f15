// What "vyra-sim list" says of the example plugins: that each thing is there, and whose it is.
#include <gtest/gtest.h>

#include <algorithm>

#include "SimulatorRun.h"

namespace {

SimulatorRun List(const std::string& what, const std::vector<std::string>& further = {}) {
  std::vector<std::string> arguments{"list", what, "--system", VYRA_SIM_EXAMPLE_FOLDER};
  arguments.insert(arguments.end(), further.begin(), further.end());
  return RunSimulator(arguments);
}

nlohmann::json Rows(const std::string& what, int frames = 5) {
  const SimulatorRun run = List(what, {"--frames", std::to_string(frames), "--json"});
  EXPECT_EQ(run.exitCode, 0) << run.error;
  EXPECT_EQ(run.error, "");
  return nlohmann::json::parse(run.output);
}

// The row that has this value, or null.
nlohmann::json RowWith(const nlohmann::json& rows, const char* key, const nlohmann::json& value) {
  const auto found =
      std::ranges::find_if(rows, [&](const nlohmann::json& row) { return row.at(key) == value; });
  return found != rows.end() ? *found : nlohmann::json();
}

TEST(Lists, PluginsWithTheirModules) {
  const nlohmann::json rows = Rows("plugins", 0);
  EXPECT_EQ(rows.size(), 5U);
  const nlohmann::json clock = RowWith(rows, "signature", "org.skyvora.clock");
  EXPECT_EQ(clock.at("name"), "Clock");
  EXPECT_EQ(clock.at("state"), "enabled");
  EXPECT_EQ(clock.at("path"), VYRA_SIM_EXAMPLE_FOLDER "/Resources/plugins/clock/64/lin.vyp");
}

TEST(Lists, DatarefsWithUnitsValuesAndOwners) {
  const nlohmann::json rows = Rows("datarefs");
  EXPECT_TRUE(std::ranges::is_sorted(rows, {}, [](const nlohmann::json& row) { return row.at("name"); }));
  const nlohmann::json frame = RowWith(rows, "name", "sim/time/frame");
  EXPECT_EQ(frame, (nlohmann::json{{"name", "sim/time/frame"},
                                   {"type", "int"},
                                   {"unit", "frames"},
                                   {"writable", false},
                                   {"owner", "simulator"},
                                   {"value", 5},
                                   {"description", "number of the frame, from 1"}}));
  const nlohmann::json label = RowWith(rows, "name", "clock/label");
  EXPECT_EQ(label.at("owner"), "org.skyvora.clock");
  EXPECT_EQ(label.at("type"), "data");
  EXPECT_EQ(label.at("value"), "00:00:00");
  EXPECT_EQ(RowWith(rows, "name", "clock/calls").at("value").dump(), "[5,0,0,0]");
}

TEST(Lists, CommandsWithTheirHandlers) {
  const nlohmann::json rows = Rows("commands");
  const nlohmann::json own = RowWith(rows, "owner", "simulator");
  EXPECT_NE(own.at("description"), "");
  const nlohmann::json command = RowWith(rows, "owner", "org.skyvora.tour");
  ASSERT_FALSE(command.is_null());
  EXPECT_EQ(command.at("handlers").at(0), "org.skyvora.tour") << command;
}

TEST(Lists, MenusWindowsAndKeysWithTheirOwners) {
  const nlohmann::json item = RowWith(Rows("menus"), "item", {"Plugins", "Clock", "Show window"});
  EXPECT_EQ(item.at("owner"), "org.skyvora.clock");
  EXPECT_EQ(item.at("state"), "checked");
  const nlohmann::json window = RowWith(Rows("windows"), "owner", "org.skyvora.clock");
  EXPECT_EQ(window.at("shown"), true);
  EXPECT_GT(window.at("right"), window.at("left"));
  const nlohmann::json keys = Rows("keys");
  const nlohmann::json hotKey = RowWith(keys, "owner", "org.skyvora.clock");
  EXPECT_NE(hotKey.at("key"), "") << hotKey;
  EXPECT_FALSE(RowWith(keys, "owner", "simulator").is_null());
}

TEST(Lists, TableHasALineForEachUnderTheNamesOfTheFields) {
  const SimulatorRun run = List("plugins", {"--only", "clock"});
  EXPECT_EQ(run.output,
            "id  name   signature          state    path\n"
            "1   Clock  org.skyvora.clock  enabled  " VYRA_SIM_EXAMPLE_FOLDER
            "/Resources/plugins/clock/64/lin.vyp\n");
  EXPECT_EQ(List("plugins", {"--only", "nobody"}).output, "none\n");
  EXPECT_EQ(List("nonsense").exitCode, 2);
}

TEST(Lists, FlightThatAPluginEndsIsToldAsAnErrorAndListsNothing) {
  const SimulatorFolder folder;
  folder.Install("faulty", "faulty/64/lin.vyp");
  setenv("VYRA_TEST_FAULT", "null@start", 1);
  const SimulatorRun run = RunSimulator({"list", "plugins", "--system", folder.Path("")});
  unsetenv("VYRA_TEST_FAULT");
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_EQ(run.output, "");
  EXPECT_NE(run.error.find("CRASHED"), std::string::npos) << run.error;
}

}  // namespace
