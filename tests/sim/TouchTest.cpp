// The menu bar and a panel, touched in a real window.
#include <gtest/gtest.h>

#include <sstream>

#include "DrivenWindow.h"

namespace {

class Touch : public testing::Test {
 protected:
  Touch() { folder.Install("toucher", "toucher/64/lin.vyp"); }

  static void Pick(DrivenWindow& window, const std::string& item) {
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

  SimulatorFolder folder;
};

// A user may be faster than frames are drawn: what was clicked, and what was typed into, is what was under
// the mouse then. The simulator and plugins hear of the click beside the panels alone.
TEST_F(Touch, HandsMayBeFasterThanFrames) {
  DrivenWindow window(folder, {"--rate", "4"});
  window.Click("menu/View");
  window.ClickAndGoOn("menu/View/Commands", 1200, 700);
  window.Await("mouse pressed at 1200, 99: left to the simulator");
  window.Enter("Commands/search", "touch/act 5");
  window.AwaitGone("Commands/press sim/throttle/increase");
  const SimulatorRun run = window.Close();
  EXPECT_EQ(run.exitCode, 0) << run.output << run.error;
  EXPECT_EQ(run.output.find("key "), std::string::npos) << run.output;
  EXPECT_EQ(run.output.find("mouse pressed"), run.output.rfind("mouse pressed")) << run.output;
}

// The check mark that the first pick sets stands in the bar, and a handler may clear away the menu that it
// was picked from.
TEST_F(Touch, MenusMayChangeUnderTheHandOfTheirUser) {
  DrivenWindow window(folder, {});
  Pick(window, "Check");
  Pick(window, "Check");
  Pick(window, "Rename");
  Pick(window, "Renamed");
  Pick(window, "Clear");
  window.Click("menu/Plugins");
  const SimulatorRun run = window.Close();
  EXPECT_EQ(run.exitCode, 0) << run.output << run.error;
  EXPECT_EQ(Heard(run.log),
            (std::vector<std::string>{"toucher: check 2", "toucher: check 1", "toucher: rename",
                                      "toucher: rename", "toucher: clear"}));
}

}  // namespace
