// What the words of flight files do, seen from the outside: flights of which some expectations are made to
// fail.
#include <gtest/gtest.h>

#include <fstream>

#include "SimulatorRun.h"

namespace {

using nlohmann::json;

class FlightWords : public testing::Test {
 protected:
  FlightWords() { folder.Install("plain", "plain/64/lin.vyp"); }

  // The results of the expectations, in their order: "held", or what was found and where it held last.
  std::vector<std::string> Fly(int frames, const char* flight) {
    run = folder.FlyFile(frames, json::parse(flight));
    std::vector<std::string> results;
    if (!run.report.is_object()) return {run.error};
    for (const json& expectation : run.report.at("expectations")) {
      const std::string result = expectation.at("result");
      results.push_back(result != "failed" ? result
                                           : expectation.at("found").get<std::string>() + " after " +
                                                 std::to_string(expectation.at("lastHeld").get<int>()));
    }
    return results;
  }

  std::vector<std::string> FailedSteps() const {
    std::vector<std::string> failures;
    for (const json& step : run.report.at("failedSteps"))
      failures.push_back(std::to_string(step.at("frame").get<int>()) + ": " +
                         step.at("text").get<std::string>());
    return failures;
  }

  const SimulatorFolder folder;
  SimulatorRun run;
};

using Strings = std::vector<std::string>;

// The wind is 5 after the frames 5 to 7.
TEST_F(FlightWords, ExpectationsHoldOverFramesAndSayWhereTheyHeldLast) {
  const Strings results = Fly(20, R"({
    "steps": [
      {"frame": 5, "writeDataRef": {"name": "sim/weather/wind_m_per_s", "value": 5}},
      {"frame": 8, "writeDataRef": {"name": "sim/weather/wind_m_per_s", "value": 0}}],
    "expectations": [
      {"frame": 2, "within": 3, "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"frame": 2, "within": 2, "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"frame": 5, "throughout": 2, "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"frame": 5, "throughout": 3, "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"frame": 1, "never": 3, "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"frame": 1, "never": 4, "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"frame": 8, "never": 100, "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"frame": 8, "within": 100, "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"second": 0.1, "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"second": 0.12, "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"after": "end", "dataRef": "sim/weather/wind_m_per_s", "equals": 5},
      {"after": "start", "within": 5, "dataRef": "sim/weather/wind_m_per_s", "equals": 5}]})");
  EXPECT_EQ(results, (Strings{"held", "0 after 0", "held", "0 after 7", "held", "5 after 0", "held",
                              "0 after 7", "held", "0 after 7", "0 after 7", "held"}))
      << run.output;
  EXPECT_NE(run.output.find("equals 5 throughout 3 frames (found 0), true last after frame 7, line "),
            std::string::npos)
      << run.output;
}

TEST_F(FlightWords, StepsInARowWaitForWhatTheyNeed) {
  const Strings results = Fly(200, R"({
    "steps": [
      {"frame": 10, "writeDataRef": {"name": "sim/controls/rudder_ratio", "value": 1, "overFrames": 4}},
      {"later": 2, "writeDataRef": {"name": "sim/controls/rudder_ratio", "value": 0, "overSeconds": 0.0001}},
      {"later": 3, "waitUntil": {"dataRef": "sim/time/elapsed_s", "atLeast": 0.495}, "limit": 100},
      {"later": 1, "writeDataRef": {"name": "sim/controls/rudder_ratio", "value": -1}},
      {"later": 0, "waitUntil": {"dataRef": "sim/controls/rudder_ratio", "equals": 7}, "limit": 9},
      {"frame": 33, "writeDataRef": {"name": "sim/aircraft/fuel_kg", "value": 33}},
      {"later": 500, "writeDataRef": {"name": "sim/aircraft/fuel_kg", "value": 44}},
      {"frame": 12, "writeDataRef": {"name": "sim/aircraft/name", "value": 1, "overFrames": 9}}],
    "expectations": [
      {"frame": 11, "dataRef": "sim/controls/rudder_ratio", "equals": 0.5},
      {"frame": 13, "dataRef": "sim/controls/rudder_ratio", "equals": 1},
      {"frame": 15, "dataRef": "sim/controls/rudder_ratio", "equals": 0},
      {"frame": 31, "dataRef": "sim/controls/rudder_ratio", "equals": 0},
      {"frame": 32, "dataRef": "sim/controls/rudder_ratio", "equals": -1}]})");
  EXPECT_EQ(results, Strings(5, "held")) << run.output;
  EXPECT_EQ(FailedSteps(),
            (Strings{"12: sim/aircraft/name is no number that could be changed",
                     "41: waited 9 frames in vain: sim/controls/rudder_ratio equals 7 (found -1)",
                     "200: the flight ended before this step was done"}))
      << run.output;
}

// Every way to touch what a plugin has, as the plugin hears of it.
TEST_F(FlightWords, UserTouchesWhatPluginsHave) {
  folder.Install("toucher", "toucher/64/lin.vyp");
  const Strings results = Fly(20, R"({
    "steps": [
      {"frame": 1, "key": "a"},
      {"frame": 2, "key": "Page Up", "modifiers": ["control"]},
      {"frame": 3, "pressKey": "a", "modifiers": ["shift", "alt"]},
      {"frame": 4, "releaseKey": "a"},
      {"frame": 5, "pressKey": "f4", "modifiers": ["shift", "control"]},
      {"frame": 6, "moveMouse": {"x": 150, "y": 150}},
      {"frame": 6, "turnWheel": {"x": 150, "y": 150, "clicks": -3, "wheel": 1}},
      {"frame": 7, "turnWheel": {"x": 50, "y": 50, "clicks": 2}},
      {"frame": 8, "drag": [[110, 110], [120, 115], [400, 400]]},
      {"later": 1, "pressKey": "7"},
      {"later": 0, "pressMouse": {"x": 500, "y": 500}},
      {"later": 0, "moveMouse": {"x": 150, "y": 150}},
      {"later": 0, "releaseMouse": true},
      {"frame": 15, "pickMenuItem": ["Plugins", "Touch", "Left/Right"]}],
    "expectations": [
      {"frame": 1, "logContains": "toucher: key 97, flags 0, virtual 65"},
      {"frame": 1, "logContains": "toucher: key 97, flags 8, virtual 65"},
      {"frame": 2, "logContains": "toucher: key 0, flags 2, virtual 33"},
      {"frame": 3, "logContains": "toucher: key 65, flags 5, virtual 65"},
      {"frame": 4, "logContains": "toucher: key 97, flags 8, virtual 65", "times": 2},
      {"frame": 5, "logContains": "toucher: hot key"},
      {"frame": 6, "logContains": "toucher: wheel 1 by -3"},
      {"frame": 7, "logContains": "toucher: wheel", "times": 1},
      {"frame": 8, "logContains": "toucher: mouse 1 at 110, 110"},
      {"frame": 9, "logContains": "toucher: mouse 2 at 120, 115"},
      {"frame": 10, "logContains": "toucher: mouse 2 at 400, 400", "times": 1},
      {"frame": 11, "logContains": "toucher: mouse 3 at 400, 400", "times": 1},
      {"frame": 12, "logContains": "toucher: window key 55, flags 0, virtual 55"},
      {"frame": 20, "logContains": "toucher: mouse 3", "times": 1},
      {"frame": 14, "logLacks": "toucher: menu"},
      {"frame": 15, "logContains": "toucher: menu"},
      {"frame": 15, "menuItem": ["Plugins", "Touch", "Left/Right"], "is": "plain"},
      {"frame": 15, "menuItem": "Plugins/Touch/Left/Right", "is": "absent"}]})");
  EXPECT_EQ(results, Strings(18, "held")) << run.output << run.log;
  for (const char* const told : {"key control+Page Up: left to the simulator",
                                 "key shift+control+F4 pressed: taken by org.skyvora.test.toucher",
                                 "wheel turned by -3 at 150, 150: taken by org.skyvora.test.toucher",
                                 "wheel turned by 2 at 50, 50: left to the simulator",
                                 "dragged from 110, 110 to 400, 400: taken by org.skyvora.test.toucher",
                                 "key 7 pressed: taken by org.skyvora.test.toucher",
                                 "mouse pressed at 500, 500: left to the simulator"})
    EXPECT_NE(run.output.find(told), std::string::npos) << told << "\n" << run.output;
}

// One hot key of several, one item of two with the same name, one element of an array.
TEST_F(FlightWords, UserChangesOneOfSeveral) {
  folder.Install("toucher", "toucher/64/lin.vyp");
  const Strings results = Fly(10, R"({
    "steps": [
      {"frame": 2, "bindHotKey": {"of": "org.skyvora.test.toucher", "description": "Touches", "to": "f5",
                                  "modifiers": ["alt"]}},
      {"frame": 3, "key": "F4", "modifiers": ["shift", "control"]},
      {"frame": 4, "key": "F5", "modifiers": ["alt"]},
      {"frame": 5, "bindHotKey": {"of": "org.skyvora.test.toucher", "to": "F6"}},
      {"frame": 5, "bindHotKey": {"of": "org.skyvora.test.toucher", "description": "Touches", "number": 2,
                                  "to": "F6"}},
      {"frame": 6, "pickMenuItem": ["Plugins", "Touch", "Left/Right"], "number": 2},
      {"frame": 6, "pickMenuItem": ["Plugins", "Touch", "Left/Right"], "number": 3},
      {"frame": 7, "writeDataRef": {"name": "touch/numbers", "value": [1, 2, 3]}},
      {"frame": 7, "writeDataRef": {"name": "touch/numbers", "value": 7.5, "index": 1}}],
    "expectations": [
      {"frame": 2, "hotKey": "F5", "modifiers": ["alt"], "of": "org.skyvora.test.toucher"},
      {"frame": 3, "logLacks": "toucher: hot key"},
      {"frame": 4, "logContains": "toucher: hot key", "times": 1},
      {"frame": 5, "hotKey": "F6", "of": "nobody"},
      {"frame": 6, "logContains": "toucher: namesake", "times": 1},
      {"frame": 6, "logLacks": "toucher: menu"},
      {"frame": 7, "dataRef": "touch/numbers", "equals": [1, 7.5, 3]}]})");
  EXPECT_EQ(results, Strings(7, "held")) << run.output << run.log;
  EXPECT_EQ(FailedSteps(),
            (Strings{"5: hot key \"\" of org.skyvora.test.toucher not bound: there is no such hot key",
                     "5: hot key \"Touches\" of org.skyvora.test.toucher not bound: there is no such hot key",
                     "6: menu item Plugins/Touch/Left/Right not picked: there is no such item"}));
}

TEST_F(FlightWords, PluginsAndSceneryComeAndGo) {
  folder.Write(R"({"name": "A", "objects": [{"path": "a.obj", "file": "a.obj"}]})",
               "../../Scenery/A/package.json");
  folder.Write("v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n", "../../Scenery/A/a.obj");
  folder.Install("reader", "../../Scenery/A/plugins/reader/64/lin.vyp");
  const Strings results = Fly(20, R"({
    "steps": [
      {"frame": 2, "loadScenery": "Scenery/A"},
      {"frame": 4, "unloadScenery": "Scenery/A/"},
      {"frame": 6, "loadScenery": "Scenery/A/"},
      {"frame": 8, "reloadPlugins": true},
      {"frame": 10, "loadScenery": "Scenery/A"},
      {"frame": 12, "disablePlugin": "org.skyvora.test.reader"},
      {"frame": 14, "enablePlugin": "org.skyvora.test.reader"},
      {"frame": 15, "enablePlugin": "org.skyvora.test.none"}],
    "expectations": [
      {"frame": 2, "plugin": "org.skyvora.test.reader", "is": "enabled"},
      {"frame": 3, "dataRef": "sim/scenery/package_count", "equals": 1},
      {"frame": 4, "plugin": "org.skyvora.test.reader", "is": "disabled"},
      {"frame": 4, "dataRef": "sim/scenery/package_count", "equals": 0},
      {"frame": 6, "plugin": "org.skyvora.test.reader", "is": "enabled"},
      {"frame": 6, "dataRef": "sim/scenery/package_count", "equals": 1},
      {"frame": 8, "plugin": "org.skyvora.test.reader", "is": "absent"},
      {"frame": 10, "plugin": "org.skyvora.test.reader", "is": "enabled"},
      {"frame": 12, "plugin": "org.skyvora.test.reader", "is": "disabled"},
      {"frame": 14, "plugin": "org.skyvora.test.reader", "is": "enabled"},
      {"frame": 14, "logLacks": "already loaded"}]})");
  EXPECT_EQ(results, Strings(11, "held")) << run.output << run.log;
  EXPECT_EQ(FailedSteps(), Strings{"15: no plugin org.skyvora.test.none to be enabled"});
}

// Each word once as it holds, and once as it does not.
TEST_F(FlightWords, ExpectationsSeeWhatPluginsHaveAndTake) {
  folder.Install("toucher", "toucher/64/lin.vyp");
  folder.Write("one two three", "../../notes.txt");
  const Strings results = Fly(20, R"({
    "steps": [
      {"frame": 2, "click": {"x": 150, "y": 150}},
      {"frame": 3, "key": "b"},
      {"frame": 4, "turnWheel": {"x": 150, "y": 150, "clicks": 1}},
      {"frame": 5, "writeDataRef": {"name": "touch/shared", "value": 5}},
      {"frame": 5, "command": {"name": "touch/act", "passes": 1}},
      {"frame": 6, "writeDataRef": {"name": "touch/shared", "value": 9}},
      {"frame": 8, "click": {"x": 5, "y": 5}},
      {"frame": 9, "disablePlugin": "org.skyvora.test.toucher"}],
    "expectations": [
      {"frame": 1, "window": "org.skyvora.test.toucher", "is": "shown", "at": {"left": 100, "top": 200}},
      {"frame": 1, "window": "org.skyvora.test.toucher", "is": "shown", "at": {"left": 101}},
      {"frame": 1, "window": "org.skyvora.test.toucher", "is": "front"},
      {"frame": 1, "window": "org.skyvora.test.plain", "is": "absent"},
      {"frame": 1, "window": "org.skyvora.test.toucher", "is": "focused"},
      {"frame": 2, "window": "org.skyvora.test.toucher", "is": "focused"},
      {"frame": 9, "window": "org.skyvora.test.toucher", "is": "hidden"},
      {"frame": 2, "clickTakenBy": "org.skyvora.test.toucher"},
      {"frame": 8, "clickTakenBy": "simulator"},
      {"frame": 8, "clickTakenBy": "org.skyvora.test.toucher"},
      {"frame": 3, "keyTakenBy": "org.skyvora.test.toucher"},
      {"frame": 3, "wheelTakenBy": "simulator"},
      {"frame": 4, "wheelTakenBy": "org.skyvora.test.toucher"},
      {"frame": 4, "cursor": 7},
      {"frame": 8, "cursor": 7},
      {"frame": 8, "hotKey": "F4", "modifiers": ["control", "shift"], "of": "org.skyvora.test.toucher"},
      {"frame": 8, "hotKey": "F4", "of": "org.skyvora.test.toucher"},
      {"frame": 9, "hotKey": "F4", "modifiers": ["control", "shift"], "of": "nobody"},
      {"frame": 5, "called": "org.skyvora.test.toucher", "for": "shared data", "times": 1},
      {"frame": 5, "called": "org.skyvora.test.toucher", "for": "command", "atLeast": 1},
      {"frame": 5, "called": "org.skyvora.test.toucher", "for": "hot key"},
      {"frame": 5, "command": "touch/act", "handledBy": "org.skyvora.test.toucher"},
      {"frame": 5, "command": "sim/time/pause", "handledBy": "org.skyvora.test.toucher"},
      {"frame": 5, "textureBound": 77},
      {"frame": 9, "textureBound": 77},
      {"frame": 5, "file": "notes.txt", "contains": "two"},
      {"frame": 5, "file": "notes.txt", "contains": "four"},
      {"frame": 5, "file": "other.txt", "absent": true},
      {"frame": 5, "feature": "VYRA_USE_NATIVE_PATHS", "is": "known"},
      {"frame": 5, "feature": "VYRA_NONE", "is": "known"},
      {"frame": 5, "dataRef": "touch/shared", "changesBy": 4.5, "tolerance": 0.6, "since": 4},
      {"frame": 6, "dataRef": "touch/shared", "changesBy": 4, "since": 5},
      {"frame": 6, "dataRef": "touch/shared", "changesBy": 4, "since": 4},
      {"frame": 6, "dataRef": "touch/shared", "between": [8, 9]},
      {"frame": 6, "dataRef": "touch/shared", "atMost": 8},
      {"after": "end", "cost": "org.skyvora.test.toucher", "below": 1000, "of": "longest"},
      {"after": "end", "cost": "org.skyvora.test.toucher", "below": 0}]})");
  const std::string window = "a shown, front one at 100, 100 to 300, 200";
  ASSERT_EQ(results.size(), 37U) << run.error;
  const std::string& lastCost = results.back();
  EXPECT_NE(lastCost.find(" ms after "), std::string::npos) << lastCost;
  const Strings expected{"held",
                         window + " after 0",
                         "held",
                         "held",
                         window + " after 0",
                         "held",
                         "held",
                         "held",
                         "held",
                         "simulator after 7",
                         "held",
                         "nothing was done after 0",
                         "held",
                         "held",
                         "0 after 7",
                         "held",
                         "nobody after 0",
                         "held",
                         "held",
                         "held",
                         "0 times after 0",
                         "held",
                         "nobody after 0",
                         "held",
                         "none after 8",
                         "held",
                         "a file of 13 bytes without it after 0",
                         "held",
                         "held",
                         "unknown after 0",
                         "held",
                         "held",
                         "9 after 0",
                         "held",
                         "9 after 5",
                         "held"};
  EXPECT_EQ(Strings(results.begin(), results.end() - 1), expected) << run.output << run.log;
}

TEST_F(FlightWords, WarningsOfTheLogCanBeExpectedNotToCome) {
  folder.Write("v 0 0 zero\n", "../../damaged.obj");
  folder.Write("{\n\"name\": 5}", "../../Scenery/A/package.json");
  const Strings results = Fly(3, R"({"expectations": [{"frame": 1, "noWarnings": true}]})");
  ASSERT_EQ(results.size(), 1U) << run.error;
  EXPECT_TRUE(results[0].starts_with("1, the first: Failed: ")) << results[0];
  EXPECT_NE(results[0].find("package.json:2: "), std::string::npos) << results[0];
}

TEST_F(FlightWords, FileSaysOverWhatAndForHowLongItIsFlown) {
  folder.Install("reader", "reader/64/lin.vyp");
  const std::string file = folder.Path("flights/flight.json");
  folder.Write(R"({"frames": 7, "rate": 50, "system": "..", "plugins": ["plain"],
    "expectations": [{"after": "end", "pluginCount": 2}]})",
               "../../flights/flight.json");
  const auto fly = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"run", "--flight", file});
    return RunSimulator(arguments);
  };
  const SimulatorRun asTheFileSays = fly({});
  EXPECT_EQ(asTheFileSays.exitCode, 0) << asTheFileSays.error;
  EXPECT_NE(asTheFileSays.output.find("(frames: 7 at 50 Hz"), std::string::npos) << asTheFileSays.output;
  const SimulatorRun asTheLineSays =
      fly({"--frames", "3", "--rate", "60", "--only", "reader", "--only", "plain"});
  EXPECT_NE(asTheLineSays.output.find("(frames: 3 at 60 Hz"), std::string::npos) << asTheLineSays.output;
  EXPECT_NE(asTheLineSays.output.find("FAILED  there are 2 plugins (found 3)"), std::string::npos);

  folder.Write("{\"frames\": 7,\n\"rate\": 0.5, \"system\": \"..\"}", "../../flights/flight.json");
  EXPECT_EQ(fly({}).error, "vyra-sim: " + file + ":2:9: \"rate\" must be from 1 to 1000\n");
  folder.Write(R"({"frames": 7, "system": ".."})", "../../flights/flight.json");
  EXPECT_EQ(fly({}).error, "vyra-sim: --rate is needed, or \"rate\" in a flight file\n");
}

}  // namespace
