// What plugins do from inside their own callbacks: unload themselves, load others, stop each other, throw.
#include <exception>
#include <ostream>
#include <utility>

#include "ModuleTest.h"
#include "VYRAUtilities.h"

class Reentry : public ModuleTest {};

TEST_F(Reentry, FlightLoopMayDisableItsPluginAndTheNextOne) {
  AddFolders(main, {"a", "b", "c"});
  for (const char* start : {"a.start", "b.start", "c.start"}) On(start, RegisterAll);
  On("c.loop", [](Moment&) {
    VYRADisablePlugin(Id("b"));
    VYRADisablePlugin(VYRAGetMyID());
  });
  Start();
  Pass();
  EXPECT_EQ(Trace(), "c.loop b.disable c.disable a.loop");
  VYRAEnablePlugin(Id("b"));
  Pass();
  EXPECT_EQ(Trace(), "b.enable b.loop a.loop");
}

TEST_F(Reentry, PluginsLoadedDuringAStopAreStoppedToo) {
  AddFolders(main, {"first"});
  AddFolders(aircraft, {"wing"});
  AddFolders(scenery, {"sea"});
  AddFolders(root + "Other/plugins/", {"flap"});
  On("wing.stop", [this](Moment&) {
    gHost.planePath = root + "Other/other.acf";
    AskHost(LoadPlane);
  });
  On("first.stop", [this](Moment&) { AskHost([this] { LoadScenery(); }); });
  StartTraced();
  LoadPlane();
  UnloadPlane();
  VYRAShutdownPlugins();
  const std::string trace = Trace();
  for (const std::string name : {"first", "wing", "flap", "sea"}) {
    EXPECT_EQ(CountOf(trace, name + ".start"), 1) << trace;
    EXPECT_EQ(CountOf(trace, name + ".stop"), 1) << trace;
  }
  EXPECT_EQ(VYRACountPlugins(), 0);
  for (const std::string& folder : {main + "first", aircraft + "wing", scenery + "sea"}) {
    EXPECT_FALSE(IsMapped(folder + "/64/lin.vyp")) << folder;
  }
}

TEST_F(Reentry, StartMayLoadOthersAndThenStayOrRefuse) {
  Add(main + "a.vyp");
  AddFolders(main, {"z"});
  AddFolders(scenery, {"lake", "sea"});
  for (const int result : {1, 0}) {
    On("a.start", [&, result](Moment& moment) {
      AskHost([this] { LoadScenery(); });
      EXPECT_EQ(VYRAGetMyID(), 1);
      RegisterAll(moment);
      moment.result = result;
    });
    Start();
    EXPECT_EQ(VYRAEnablePlugin(1), result);
    for (const auto& [name, id] : {std::pair{"lake", 2}, {"sea", 3}, {"z", 4}}) EXPECT_EQ(Id(name), id);
    Pass();
    EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef("test/a")), result ? 7 : 0);
    Event(VYRA_EVENT_BROADCAST_101);
    EXPECT_EQ(Trace(), std::string(result ? "a.loop a.read a.message(0,101,0) " : "") +
                           "lake.message(0,101,0) sea.message(0,101,0) z.message(0,101,0)");
    VYRAShutdownPlugins();
    Trace();
  }
}

TEST_F(Reentry, ThrowingStartLeavesNothingBehind) {
  AddFolders(aircraft, {"wing"});
  Start();
  On("wing.start", [](Moment& moment) {
    RegisterAll(moment);
    moment.fail();
  });
  EXPECT_THROW(LoadPlane(), std::exception);
  EXPECT_EQ(VYRAGetMyID(), 0);
  EXPECT_EQ(VYRACountPlugins(), 1);
  EXPECT_EQ(VYRAFindDataRef("test/wing"), nullptr);
  Pass();
  EXPECT_EQ(Trace(), "wing.start");
  EXPECT_FALSE(IsMapped(aircraft + "wing/64/lin.vyp"));
  On("wing.start", [](Moment&) {});
  LoadPlane();
  EXPECT_EQ(Trace(), "wing.start wing.enable");
}

TEST_F(Reentry, NestedPassLeavesAReloadToTheOutermost) {
  AddFolders(main, {"a"});
  On("a.start", RegisterAll);
  int passes = 0;
  On("a.loop", [&](Moment&) {
    if (++passes > 1) return;
    VYRAReloadPlugins();
    AskHost(Pass);
    EXPECT_EQ(Trace(), "a.loop a.loop");
  });
  Start();
  Pass();
  EXPECT_EQ(Trace(), "a.disable a.stop a.start a.enable");
}

// ---- What a plugin may do inside each kind of call, whoever it was that made the call ------------------

struct CallKind {
  const char* name;
  const char* moment;
  void (*make)();

  friend void PrintTo(const CallKind& kind, std::ostream* out) { *out << kind.name; }
};

void Raise(int event) { VYRAEventHook(event, nullptr, nullptr, 0, 0); }

constexpr CallKind kCallKinds[] = {
    {"FlightLoop", "wing.loop", [] { Raise(VYRA_EVENT_FLIGHT_LOOPS_0); }},
    {"Broadcast", "wing.message", [] { Raise(VYRA_EVENT_BROADCAST_101); }},
    {"Message", "wing.message", [] { VYRASendMessageToPlugin(1, 1, nullptr); }},
    {"Read", "wing.read", [] { VYRAGetDatai(VYRAFindDataRef("test/wing")); }},
    {"SharedDataChanged", "wing.changed", [] { VYRASetDatai(VYRAFindDataRef("test/shared"), 1); }},
    {"EnableAfterLoad", "wing.enable",
     [] {
       Raise(VYRA_EVENT_PLANE_UNLOADED);
       Raise(VYRA_EVENT_PLANE_LOADED);
     }},
    {"Enable", "wing.enable",
     [] {
       VYRADisablePlugin(1);
       VYRAEnablePlugin(1);
     }},
    {"Disable", "wing.disable", [] { VYRADisablePlugin(1); }},
    {"DisableBeforeUnload", "wing.disable", [] { Raise(VYRA_EVENT_PLANE_UNLOADED); }},
    {"Stop", "wing.stop", [] { Raise(VYRA_EVENT_PLANE_UNLOADED); }},
};

class InsideACall : public Reentry, public testing::WithParamInterface<CallKind> {
 protected:
  InsideACall() {
    AddFolders(aircraft, {"wing"});
    On("wing.start", RegisterAll);
    Start();
    LoadPlane();
    Trace();
  }

  /** Makes the call; the plugin does `what` in it, and nothing in further calls of this kind. */
  void MakeCall(const Script& what) {
    called_ = false;
    On(GetParam().moment, [this, what](Moment& moment) {
      if (!std::exchange(called_, true)) what(moment);
    });
    GetParam().make();
    EXPECT_TRUE(called_);
  }

  const std::string module = aircraft + "wing/64/lin.vyp";

 private:
  bool called_ = false;
};

TEST_P(InsideACall, UnloadedPluginStaysMappedUntilTheOutermostCallReturnsAndLeavesNothingBehind) {
  for (const auto leave : {&VYRAShutdownPlugins, +[] { UnloadPlane(); }}) {
    MakeCall([&](Moment& moment) {
      AskHost(leave);
      EXPECT_TRUE(IsMapped(module));
      EXPECT_EQ(VYRAEnablePlugin(VYRAGetMyID()), 0);
      EXPECT_EQ(VYRACountPlugins(), leave == VYRAShutdownPlugins ? 0 : 2) << "Its ID is not given out again.";
      RegisterAll(moment);
    });
    EXPECT_EQ(VYRAGetMyID(), 0);
    EXPECT_EQ(VYRAEnablePlugin(1), 0);
    EXPECT_EQ(VYRAIsPluginEnabled(1), 0);
    Pass();         // modules are closed by the end of the next event at the latest,
    StartTraced();  // which after a shutdown is the next start
    EXPECT_FALSE(IsMapped(module));
    EXPECT_EQ(VYRAFindDataRef("test/wing"), nullptr);
    LoadPlane();
    const std::string trace = Trace();
    EXPECT_EQ(CountOf(trace, "wing.stop"), CountOf(trace, "wing.start")) << trace;
    Pass();
    EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef("test/wing")), 7);
    VYRASetDatai(VYRAFindDataRef("test/shared"), 2);
    EXPECT_EQ(Trace(), "wing.loop wing.read wing.changed");
  }
}

TEST_P(InsideACall, FiftyPluginsMayBeLoadedByAHostService) {
  std::vector<std::string> names(50);
  for (std::string& name : names) {
    name.assign("s").append(std::to_string(&name - names.data()));
    Add(scenery + name + "/lin.vyp");
  }
  gHost.services.SpeakString = [](const char* package) { Event(VYRA_EVENT_SCENERY_PACKAGE, package); };
  MakeCall([this](Moment&) {
    const VYRAPluginID self = VYRAGetMyID();
    VYRASpeakString((root + "Scenery/").c_str());
    EXPECT_EQ(VYRAGetMyID(), self);
    EXPECT_EQ(Id("wing"), self);
  });
  for (const std::string& name : names) EXPECT_EQ(VYRAIsPluginEnabled(Id(name)), 1) << name;
  VYRAShutdownPlugins();
  const std::string trace = Trace();  // without the start of the fixture's wing
  EXPECT_EQ(CountOf(trace, ".stop"), CountOf(trace, ".start") + 1);
}

TEST_P(InsideACall, ExceptionPassesToTheHostAndLeavesTheLibraryInOrder) {
  EXPECT_THROW(MakeCall([](Moment& moment) { moment.fail(); }), std::exception);
  EXPECT_EQ(VYRAGetMyID(), 0);
  const bool gone = std::string(GetParam().name) == "Stop";
  EXPECT_EQ(VYRAEnablePlugin(1), gone ? 0 : 1);
  Trace();
  Pass();
  VYRASendMessageToPlugin(1, 1, nullptr);
  EXPECT_EQ(Trace(), gone ? "" : "wing.loop wing.message(0,1,0)");
  UnloadPlane();
  EXPECT_EQ(CountOf(Trace(), "wing.stop"), gone ? 0 : 1);
  EXPECT_FALSE(IsMapped(module));
}

INSTANTIATE_TEST_SUITE_P(Kinds, InsideACall, testing::ValuesIn(kCallKinds),
                         [](const auto& kind) { return kind.param.name; });
