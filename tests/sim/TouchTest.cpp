// The menu bar, touched in a real window.
#include <gtest/gtest.h>

#include <sstream>

#include "DrivenWindow.h"

namespace {

class Touch : public testing::Test {
 protected:
  Touch() { folder.Install("toucher", "toucher/64/lin.vyp"); }

  static void Pick(const DrivenWindow& window, const std::string& item) {
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
