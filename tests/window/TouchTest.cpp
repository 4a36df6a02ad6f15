// The menu bar and the panels, touched in a real window, and the flight that is recorded meanwhile, flown
// again without one.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "Hands.h"
#include "SimulatorRun.h"

namespace {

using nlohmann::json;

constexpr const char* kToucher = "org.skyvora.test.toucher";

class Touch : public testing::Test {
 protected:
  Touch() { folder.Install("toucher", "toucher/64/lin.vyp"); }

  static void Show(Hands& window, const std::string& panel) {
    window.Click("menu/View");
    window.Click("menu/View/" + panel);
    window.AwaitGone("menu/View/" + panel);
  }

  static void Pick(Hands& window, const std::string& item) {
    window.Click("menu/Plugins");
    window.Click("menu/Plugins/Touch");
    window.Click("menu/Plugins/Touch/" + item);
    window.Await("menu item Plugins/Touch/" + item + " picked");
    window.AwaitGone("menu/Plugins/Touch");
  }

  // What the plugin heard of the user, in its order.
  static std::vector<std::string> Heard(const std::string& log) {
    std::vector<std::string> heard;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);)
      if (line.starts_with("toucher: ")) heard.push_back(line);
    return heard;
  }

  static std::ptrdiff_t CountOf(const std::vector<std::string>& heard, const std::string& begin) {
    return std::ranges::count_if(heard, [&](const std::string& line) { return line.starts_with(begin); });
  }

  SimulatorFolder folder;
  const OwnDisplay display{1280, 800};
};

// The last thing that is done tells the pass and where the aircraft is, which hang on all that was done
// before.
TEST_F(Touch, WhatIsDoneInPanelsHappensAndFliesAgainFromItsRecording) {
  const std::string recorded = folder.Path("again.json");
  Hands window(display, folder.Path(""));

  Pick(window, "Check");

  Show(window, "Datarefs");
  window.Enter("Datarefs/search", "touch");
  window.AwaitGone("Datarefs/sim/aircraft/altitude_m");
  window.Enter("Datarefs/value touch/shared", "42");
  window.Key("Return");
  window.Await("touch/shared set to 42");
  window.Click("Datarefs/touch/numbers");
  window.Enter("Datarefs/value touch/numbers[0]", "2.5");
  window.Key("Return");
  window.Await("touch/numbers[0] set to 2.5");
  window.Enter("Datarefs/value touch/shared", "no number");
  window.Key("Return");
  Show(window, "Datarefs");

  Show(window, "Windows and keys");
  window.Click("Windows and keys/rebind org.skyvora.test.toucher: Touches");
  window.Key("ctrl+F6");
  window.Await("hot key \"Touches\" of org.skyvora.test.toucher bound to control+F6");
  window.MoveMouse(640, 700);
  window.Key("ctrl+F6");
  window.Await("key control+F6 pressed: taken by org.skyvora.test.toucher");
  Show(window, "Windows and keys");

  Show(window, "Commands");
  window.Enter("Commands/search", "throttle");
  window.AwaitGone("Commands/press sim/aircraft/refuel");
  window.Press("Commands/hold sim/throttle/increase");
  window.Await("pressCommand sim/throttle/increase");
  window.Release();
  window.Await("releaseCommand sim/throttle/increase");
  window.Enter("Commands/search", "touch/act");
  window.AwaitGone("Commands/press sim/throttle/increase");
  window.Click("Commands/press touch/act");
  window.Await("command touch/act held for 1 pass");
  Show(window, "Commands");

  Show(window, "Flight");
  window.Click("Flight/stop");
  folder.Write("mine", "../../again.json");
  window.Enter("Flight/file", recorded);
  window.Click("Flight/save");
  window.Press("Flight/overwrite");  // is there only when there was something to overwrite
  EXPECT_EQ(ReadFile(recorded), "mine");
  window.Release();
  window.AwaitGone("Flight/overwrite");

  EXPECT_EQ(window.Close(), 0) << window.Output();
  const std::vector<std::string> heard = Heard(window.Log());
  EXPECT_EQ(CountOf(heard, "toucher: check"), 1);
  EXPECT_EQ(CountOf(heard, "toucher: shared"), 1) << "a text was written into a number";
  EXPECT_EQ(CountOf(heard, "toucher: hot key"), 1);
  EXPECT_EQ(CountOf(heard, "toucher: act in pass "), 3) << "it begins, goes on and ends";

  json flight = json::parse(ReadFile(recorded));
  EXPECT_EQ(flight["system"], ".");
  const int last = flight["frames"];
  flight["expectations"] = {
      {{"frame", last}, {"dataRef", "touch/shared"}, {"equals", 42}},
      {{"frame", last}, {"dataRef", "touch/numbers"}, {"equals", {2.5}}},
      {{"frame", last}, {"menuItem", "Plugins/Touch/Check"}, {"is", "checked"}},
      {{"frame", last}, {"hotKey", "F6"}, {"modifiers", {"control"}}, {"of", kToucher}}};
  std::ofstream(recorded) << flight;
  const SimulatorRun again = RunSimulator({"run", "--flight", recorded});
  EXPECT_EQ(again.exitCode, 0) << again.output << again.error;
  EXPECT_EQ(Heard(again.log), heard) << again.output;
  EXPECT_EQ(again.report.at("totals").at("frames"), last);
}

// A user may be faster than frames are drawn: what was clicked, and what was typed into, is what was under
// the mouse then. The simulator and plugins hear of the click beside the panels alone.
TEST_F(Touch, HandsMayBeFasterThanFrames) {
  Hands window(display, folder.Path(""), {"--rate", "4"});
  window.Click("menu/View");
  window.ClickAndGoOn("menu/View/Commands", 1200, 700);
  window.Await("mouse pressed at 1200, 99: left to the simulator");
  window.Enter("Commands/search", "touch/act 5");
  window.AwaitGone("Commands/press sim/throttle/increase");
  EXPECT_EQ(window.Close(), 0);
  const std::string told = window.Output();
  EXPECT_EQ(told.find("key "), std::string::npos) << told;
  EXPECT_EQ(told.find("mouse pressed"), told.rfind("mouse pressed")) << told;
}

// The check mark that the first pick sets stands in the bar, and a handler may clear away the menu that it
// was picked from.
TEST_F(Touch, MenusMayChangeUnderTheHandOfTheirUser) {
  Hands window(display, folder.Path(""));
  Pick(window, "Check");
  Pick(window, "Check");
  Pick(window, "Rename");
  Pick(window, "Renamed");
  Pick(window, "Clear");
  window.Click("menu/Plugins");
  EXPECT_EQ(window.Close(), 0);
  EXPECT_EQ(Heard(window.Log()),
            (std::vector<std::string>{"toucher: check 2", "toucher: check 1", "toucher: rename",
                                      "toucher: rename", "toucher: clear"}));
}

}  // namespace
