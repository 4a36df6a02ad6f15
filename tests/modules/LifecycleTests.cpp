// Starting and stopping the library, events, aircraft plugins and reloads.
#include <cstdint>

#include "ModuleTest.h"

class Lifecycle : public ModuleTest {};

TEST_F(Lifecycle, StartAnswers18AndWritesTheBuildStringWithItsTerminator) {
  std::string written;
  const VYRAWriteData_f write = [](void* refcon, void* values, int offset, int count) {
    static_cast<std::string*>(refcon)->assign(static_cast<char*>(values) + offset,
                                              static_cast<std::size_t>(count));
  };
  const VYRADataRef buildString = VYRARegisterDataAccessor(
      "sim/version/vyra_build_string", VYRA_TYPE_DATA, 1, nullptr, nullptr, nullptr, nullptr, nullptr,
      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, write, nullptr, &written);
  EXPECT_EQ(Start(), 18);
  EXPECT_EQ(VYRAInitialized(), 1);
  EXPECT_EQ(written.size(), std::string("Mmm dd yyyy hh:mm:ss").size() + 1);
  EXPECT_EQ(written.find('\0'), written.size() - 1);
  VYRAUnregisterDataAccessor(buildString);
}

TEST_F(Lifecycle, EveryStageRunsInTheOrderOfIdsAndTheLibraryStartsAgainAfterShutdown) {
  AddFolders(main, {"a", "c"});
  Add(main + "bare/lin.vyp", BARE_MODULE);  // has no callbacks for most stages
  for (int round = 0; round < 2; ++round) {
    StartTraced();
    EXPECT_EQ(Trace(), "a.start c.start a.enable c.enable");
    EXPECT_EQ(VYRAIsPluginEnabled(Id("bare")), 1);
    EXPECT_EQ(StartTraced(), 18) << "A start without a shutdown changes nothing.";
    EXPECT_EQ(Trace(), "");
    VYRAShutdownPlugins();
    EXPECT_EQ(Trace(), "a.disable c.disable a.stop c.stop");
    EXPECT_EQ(VYRACountPlugins(), 0);
    EXPECT_EQ(VYRAGetMyID(), 0);
    EXPECT_FALSE(IsMapped(main + "a/64/lin.vyp"));
  }
}

TEST_F(Lifecycle, EventsReachEnabledPluginsAndTheHostAsTheirMessages) {
  AddFolders(main, {"a", "disabled"});
  AddFolders(aircraft, {"wing"});
  On("disabled.enable", [](Moment& moment) { moment.result = 0; });
  Start();
  struct {
    int event, message, param;
  } const expected[] = {{2, 101, 0}, {3, 102, 7}, {4, 103, 0},  {6, 104, 0},
                        {7, 105, 0}, {8, 106, 7}, {11, 107, 0}, {13, 108, 7}};
  for (const auto& [event, message, param] : expected) {
    gHost.calls.clear();
    EXPECT_EQ(Event(event, reinterpret_cast<void*>(std::intptr_t{7})), 1) << event;
    const std::string call = "(0," + std::to_string(message);
    EXPECT_EQ(Trace(), "a.message" + call + "," + std::to_string(param) + ")") << event;
    EXPECT_EQ(gHost.CallsOf("HostReceiveMessage").at(0), "HostReceiveMessage" + call + ")") << event;
  }
  for (const int event : {-1, 1, 5, 9, 14}) EXPECT_EQ(Event(event), 1) << event;
  EXPECT_EQ(Trace(), "");
  EXPECT_EQ(VYRACountPlugins(), 3) << "Plane 7 has no plugins of its own.";
}

TEST_F(Lifecycle, AircraftPluginsComeAndGoWithPlane0AndTheirIdsAreReused) {
  AddFolders(main, {"a"});
  AddFolders(aircraft, {"wing", "engine"});
  On("wing.stop", [](Moment& moment) {
    EXPECT_EQ(VYRAEnablePlugin(VYRAGetMyID()), 0);
    RegisterAll(moment);
  });
  Start();
  for (int round = 0; round < 2; ++round) {
    LoadPlane();
    EXPECT_EQ(Trace(), "a.message(0,102,0) engine.start wing.start engine.enable wing.enable");
    EXPECT_EQ(Id("engine"), 2);
    UnloadPlane();
    VYRASetDatai(VYRAFindDataRef("test/shared"), round);
    Pass();
    EXPECT_EQ(Trace(),
              "a.message(0,106,0) engine.message(0,106,0) wing.message(0,106,0) "
              "engine.disable wing.disable engine.stop wing.stop");
    EXPECT_EQ(VYRACountPlugins(), 2);
    EXPECT_EQ(VYRAFindDataRef("test/wing"), nullptr);
    EXPECT_FALSE(IsMapped(aircraft + "wing/64/lin.vyp"));
  }
  gHost.planePath = "wing.acf";  // in no folder
  LoadPlane();
  EXPECT_EQ(VYRACountPlugins(), 2);
}

TEST_F(Lifecycle, ClosedRecordBelowASceneryPluginIsNeverCalledAgain) {
  AddFolders(aircraft, {"wing"});
  AddFolders(scenery, {"sea"});
  for (const char* moment : {"wing.start", "wing.stop"}) On(moment, RegisterAll);
  Start();
  LoadPlane();
  LoadScenery();
  UnloadPlane();
  Trace();
  ASSERT_EQ(VYRACountPlugins(), 3);
  EXPECT_EQ(InfoOf(1), "wing|||Plugin wing of a test");
  EXPECT_EQ(VYRAFindPluginByPath(""), -1);
  EXPECT_EQ(VYRAEnablePlugin(1), 0);
  EXPECT_FALSE(IsMapped(aircraft + "wing/64/lin.vyp"));
  VYRASetDatai(VYRAFindDataRef("test/shared"), 1);
  Pass();
  Event(VYRA_EVENT_BROADCAST_101);
  UnloadPlane();
  EXPECT_EQ(Trace(), "sea.message(0,101,0) sea.message(0,106,0)");

  On("wing.start", [](Moment&) {});
  LoadPlane();  // the same aircraft is no duplicate of its closed record
  EXPECT_EQ(Id("wing"), 3);
  Trace();
  VYRAReloadPlugins();
  Pass();
  EXPECT_EQ(Trace(), "sea.disable wing.disable wing.stop sea.stop wing.start wing.enable");
  LoadScenery();
  UnloadPlane();
  Trace();
  VYRAShutdownPlugins();
  EXPECT_EQ(Trace(), "sea.disable sea.stop");
  EXPECT_EQ(VYRACountPlugins(), 0);
}

TEST_F(Lifecycle, ReloadAskedForInACallbackIsCarriedOutAtTheEndOfThePass) {
  AddFolders(main, {"a", "b"});
  AddFolders(aircraft, {"wing"});
  for (const char* start : {"a.start", "b.start"}) On(start, RegisterAll);
  On("b.loop", [](Moment&) { VYRAReloadPlugins(); });
  Start();
  LoadPlane();
  Trace();
  // The user may have moved: both places are asked for anew.
  gHost.systemPath = root + "Other/";
  gHost.planePath = root + "Other/other.acf";
  AddFolders(root + "Other/Resources/plugins/", {"c"});
  AddFolders(root + "Other/plugins/", {"flap"});
  Pass();
  EXPECT_EQ(Trace(),
            "b.loop a.loop a.disable b.disable wing.disable wing.stop a.stop b.stop "
            "c.start flap.start c.enable flap.enable");
  EXPECT_EQ(VYRAFindPluginByPath("brelund.skyvora.skyvora"), 0);
  Pass();
  EXPECT_EQ(Trace(), "") << "One request, one reload.";

  gHost.systemPath = root;
  gHost.planePath = "";
  VYRAReloadPlugins();
  EXPECT_EQ(Trace(), "");
  Event(VYRA_EVENT_FLIGHT_LOOPS_1);
  EXPECT_EQ(Trace(), "c.disable flap.disable flap.stop c.stop a.start b.start a.enable b.enable");
}

TEST_F(Lifecycle, UserIsToldOfLoadingAndReloadingFromTheirTableRevisionsOn) {
  Add(main + "a.vyp");
  const std::string message =
      "ShowMessage(Please place your new plugin in the plugins folder.|I will then reload all plugins.||)";
  for (const int revision : {2, 3, 4}) {
    gHost.services.serviceTableRevision = revision;
    gHost.calls.clear();
    Start();
    VYRAReloadPlugins();
    Pass();
    EXPECT_EQ(gHost.CallsOf("ShowMessage"), std::vector<std::string>(revision > 2 ? 1 : 0, message));
    EXPECT_EQ(gHost.CallsOf("ShowLoadingStatus").size(), revision > 3 ? 2u : 0u) << revision;
    VYRAShutdownPlugins();
  }
}
