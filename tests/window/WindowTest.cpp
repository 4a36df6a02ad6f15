// What a user does in the window of a flight, and what comes of it in the simulator and in plugins.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "SimulatorRun.h"
#include "WindowedFlight.h"

namespace {

constexpr const char* kStarted = "listener: screen 640 by 480";

class WindowTest : public testing::Test {
 protected:
  WindowTest() { folder.Install("listener", "listener/64/lin.vyp"); }

  // A flight file for the window: what must be true when it is closed.
  std::string Expecting(const char* expectations) const {
    return folder.Write(std::string(R"({"expectations": )") + expectations + "}", "../flight.json");
  }

  // Pixels of the screen, y upward.
  std::string Move(int x, int y) const {
    return "mousemove " + std::to_string(x) + " " + std::to_string(display.Height() - 1 - y) + " ";
  }

  const SimulatorFolder folder;
  const OwnDisplay display;
};

TEST_F(WindowTest, PluginWindowTakesMouseWheelAndKeyboard) {
  WindowedFlight flight(display, folder.Path(""));
  ASSERT_TRUE(flight.WaitForWindow() && flight.WaitFor(kStarted));

  flight.Act(Move(150, 60) + "mousedown 1");
  ASSERT_TRUE(flight.WaitFor("listener: mouse 1 at 150, 60"));
  // The window that took it hears of it wherever it is.
  flight.Act(Move(300, 250));
  ASSERT_TRUE(flight.WaitFor("listener: mouse 2 at 300, 250"));
  flight.Act(Move(310, 250) + "mouseup 1");
  ASSERT_TRUE(flight.WaitFor("listener: mouse 3 at 310, 250"));
  flight.Act(Move(20, 199) + "click 4 click 5");
  EXPECT_TRUE(flight.WaitFor("listener: wheel 0 by 1"));
  EXPECT_TRUE(flight.WaitFor("listener: wheel 0 by -1"));

  // The click has given it the keyboard.
  flight.Act("key a key shift+b key exclam key ctrl+c key Return key F5");
  EXPECT_TRUE(
      flight.WaitFor("listener: key 97, flags 0, virtual key 65\nlistener: key 97, flags 8, virtual key 65"));
  EXPECT_TRUE(flight.WaitFor("listener: key 66, flags 1, virtual key 66"));
  EXPECT_TRUE(flight.WaitFor("listener: key 33, flags 1, virtual key 49"));
  EXPECT_TRUE(flight.WaitFor("listener: key 99, flags 2, virtual key 67"));
  EXPECT_TRUE(flight.WaitFor("listener: key 13, flags 0, virtual key 13"));
  EXPECT_TRUE(flight.WaitFor("listener: key 0, flags 0, virtual key 116"));
  // A key that is held comes again and again, and is released once, at the latest with the focus.
  flight.Act("keydown d");
  EXPECT_TRUE(flight.WaitFor(
      "listener: key 100, flags 0, virtual key 68\nlistener: key 100, flags 0, virtual key 68"));
  flight.Act("windowfocus 1");
  EXPECT_TRUE(flight.WaitFor("listener: key 100, flags 8, virtual key 68"));
  flight.Act("keyup d");

  flight.Close();
  EXPECT_EQ(flight.End(), 0);
}

TEST_F(WindowTest, WhatPluginsLeaveIsTheSimulators) {
  const std::string file = Expecting(R"([
    {"after": "end", "dataRef": "sim/camera/pitch_deg", "equals": -33},
    {"after": "end", "dataRef": "sim/time/is_paused", "equals": 1},
    {"after": "end", "dataRef": "sim/controls/elevator_ratio", "atLeast": 0.05},
    {"after": "end", "clickTakenBy": "simulator"},
    {"after": "end", "wheelTakenBy": "simulator"}])");
  WindowedFlight flight(display, folder.Path(""), {"--flight", file});
  ASSERT_TRUE(flight.WaitForWindow() && flight.WaitFor(kStarted));

  // From -8 degrees down to -33, as 100 pixels are 25 degrees.
  flight.Act(Move(400, 300) + "mousedown 1");
  ASSERT_TRUE(flight.WaitFor("mouse pressed at 400, 300: left to the simulator"));
  flight.Act(Move(400, 400) + "mouseup 1 click 4");
  ASSERT_TRUE(flight.WaitFor("mouse released at 400, 400"));
  ASSERT_TRUE(flight.WaitFor("wheel turned by 1 at 400, 400: left to the simulator"));
  // The elevator moves on for as long as its key is held: until it is pressed a second time by itself.
  flight.Act("keydown Down");
  ASSERT_TRUE(flight.WaitFor("key Down pressed"));
  ASSERT_TRUE(flight.WaitFor("key Down pressed"));
  flight.Act("keyup Down");
  ASSERT_TRUE(flight.WaitFor("key Down released"));
  flight.Act("key F12");
  ASSERT_TRUE(flight.WaitFor("key F12 released"));

  flight.Close();
  EXPECT_EQ(flight.End(), 0) << flight.Output();
  EXPECT_NE(flight.Output().find("expectations        5 ok, 0 FAILED"), std::string::npos) << flight.Output();
  EXPECT_NE(flight.Output().find(" frames shown, "), std::string::npos);
}

TEST_F(WindowTest, PluginsSeeTheSizeOfTheWindow) {
  WindowedFlight flight(display, folder.Path(""));
  ASSERT_TRUE(flight.WaitForWindow() && flight.WaitFor(kStarted));
  flight.Act("search --name Skyvora windowsize 400 300");
  EXPECT_TRUE(flight.WaitFor("listener: screen 400 by 300"));
  // The window's upper edge stays where it is, and so y counts from elsewhere.
  flight.Act("mousemove 100 250 click 1");
  EXPECT_TRUE(flight.WaitFor("listener: mouse 1 at 100, 49"));
  flight.Close();
  EXPECT_EQ(flight.End(), 0);
}

TEST_F(WindowTest, CloseButtonEndsTheFlightAsItsLastFrameDoes) {
  const std::string file = Expecting(R"([
    {"after": "end", "plugin": "org.skyvora.test.listener", "is": "enabled"},
    {"after": "shutdown", "logContains": "listener: screen", "times": 1},
    {"frame": 9000, "dataRef": "sim/time/frame", "equals": 9000}])");
  WindowedFlight flight(display, folder.Path(""), {"--flight", file, "--frames", "9000"});
  ASSERT_TRUE(flight.WaitForWindow() && flight.WaitFor(kStarted));
  flight.Close();
  EXPECT_EQ(flight.End(), 1);
  EXPECT_TRUE(flight.WaitFor("the window was closed"));
  EXPECT_NE(flight.Output().find("expectations        2 ok, 0 FAILED, 1 not reached"), std::string::npos)
      << flight.Output();
}

TEST_F(WindowTest, MessageWaitsForItsReader) {
  WindowedFlight flight(display, folder.Path(""));
  ASSERT_TRUE(flight.WaitForWindow() && flight.WaitFor(kStarted));
  flight.Act(Move(100, 100) + "click 1 key r");
  ASSERT_TRUE(flight.WaitFor("Message: "));
  EXPECT_EQ(flight.Output().find("all plugins reloaded"), std::string::npos);
  flight.Act("key Return");
  EXPECT_TRUE(flight.WaitFor("all plugins reloaded"));
  flight.Close();
  EXPECT_EQ(flight.End(), 0);
}

TEST_F(WindowTest, StallEndsTheFlightAndSafeModeLeavesThePluginOut) {
  folder.Install("toucher", "PluginAdmin/64/lin.vyp");
  {
    WindowedFlight flight(display, folder.Path(""), {"--stall-limit", "2"});
    ASSERT_TRUE(flight.WaitForWindow() && flight.WaitFor(kStarted));
    flight.Act(Move(100, 100) + "click 1 key s");
    EXPECT_EQ(flight.End(), 3);
    EXPECT_NE(flight.Output().find("window key"), std::string::npos) << flight.Output();
  }
  // Nothing is asked, as the plugin is left out anyway.
  WindowedFlight flight(display, folder.Path(""), {"--safe-mode"});
  ASSERT_TRUE(flight.WaitForWindow() && flight.WaitFor("start "));
  flight.Close();
  EXPECT_EQ(flight.End(), 0) << flight.Output();
  EXPECT_EQ(flight.Log().find("listener: screen"), std::string::npos);
}

TEST_F(WindowTest, FlightAfterACrashAsksFirst) {
  setenv("VYRA_TEST_CRASH", "1", 1);
  {
    WindowedFlight flight(display, folder.Path(""));
    EXPECT_EQ(flight.End(), 3);
  }
  {
    WindowedFlight flight(display, folder.Path(""));
    ASSERT_TRUE(flight.WaitFor("the last flight here, on ") && flight.WaitForWindow());
    flight.Act("key Escape");
    EXPECT_EQ(flight.End(), 0);
    EXPECT_EQ(flight.Log().find("listener"), std::string::npos);
  }
  // Nothing was flown, and so it is asked again.
  WindowedFlight flight(display, folder.Path(""));
  ASSERT_TRUE(flight.WaitFor("the last flight here, on ") && flight.WaitForWindow());
  flight.Act("key Return");
  ASSERT_TRUE(flight.WaitFor("start "));
  unsetenv("VYRA_TEST_CRASH");
  flight.Close();
  flight.End();
  EXPECT_NE(flight.Output().find("passed over"), std::string::npos) << flight.Output();
  EXPECT_EQ(flight.Log().find("listener: screen"), std::string::npos);
}

}  // namespace
