// From a module's file to its plugin and back: which files are opened, what a module registers before and
// after it is one, modules that are met twice, and in which order one that is turned down goes.
#include <filesystem>
#include <tuple>

#include "ModuleTest.h"
#include "VYRAPlanes.h"
#include "VYRAUtilities.h"

namespace fs = std::filesystem;

namespace {

// What a callback sees of the registry: the calling plugin and the number of records.
using View = std::tuple<VYRAPluginID, int>;
View See() { return {VYRAGetMyID(), VYRACountPlugins()}; }

class Opening : public ModuleTest {
 protected:
  std::string Taken(const std::string& path, const char* plugin) {
    return "Warning: " + path + " Signature: " + plugin + ". (A version of this plugin is already loaded.)\n";
  }
};

TEST_F(Opening, ResidentModuleIsLoadedAgainOnlyWhileItsFileIsThere) {
  const std::string module = Add(main + "fuel/64/lin.vyp", RESIDENT_MODULE);
  Start();
  VYRAShutdownPlugins();
  ASSERT_TRUE(IsMapped(module));
  fs::remove(module);
  const std::string fallback = Add(main + "fuel/lin.vyp");
  Start();
  EXPECT_EQ(VYRAFindPluginByPath(fallback.c_str()), 1);
  EXPECT_EQ(VYRACountPlugins(), 2);
}

// ---- Constructors and destructors -------------------------------------------------------------------

TEST_F(Opening, WhatAConstructorRegistersBelongsToThePluginThatItBecomes) {
  Add(main + "fuel.vyp", GLOBAL_MODULE);
  On("fuel.construct", [](Moment& moment) {
    EXPECT_EQ(See(), (View{1, 2}));
    EXPECT_EQ(VYRAEnablePlugin(1), 0);
    RegisterAll(moment);
  });
  StartTraced();
  Pass();
  EXPECT_EQ(Trace(), "fuel.construct fuel.start fuel.enable fuel.loop");
  VYRADisablePlugin(1);
  Pass();
  EXPECT_EQ(Trace(), "fuel.disable");
  VYRAShutdownPlugins();
  EXPECT_EQ(VYRAFindDataRef("test/fuel"), nullptr);
  Pass();
  EXPECT_EQ(Trace(), "fuel.stop fuel.destroy");
}

TEST_F(Opening, WhatAConstructorRegistersGoesWithAModuleThatDoesNotBecomeAPlugin) {
  Add(main + "refusing.vyp", GLOBAL_MODULE);
  Add(main + "nameless.vyp", GLOBAL_MODULE);
  Add(main + "startless.vyp", STARTLESS_MODULE);
  for (const char* construct : {"refusing.construct", "nameless.construct"}) On(construct, RegisterAll);
  On("refusing.start", [](Moment& moment) { moment.result = 0; });
  On("nameless.start", [](Moment& moment) { *moment.outSignature = '\0'; });
  Start();
  EXPECT_EQ(VYRACountPlugins(), 1);
  EXPECT_EQ(VYRAFindDataRef("test/refusing"), nullptr);
  EXPECT_EQ(VYRAFindDataRef("test/nameless"), nullptr);
  Pass();  // would call into memory that is not there any more
  EXPECT_EQ(Trace(), "");
}

TEST_F(Opening, WhatADestructorRegistersIsNeverCalled) {
  AddFolders(main, {"other"});
  for (const char* name : {"a", "b", "c"}) Add(main + name + ".vyp", GLOBAL_MODULE);
  for (const char* destroy : {"a.destroy", "b.destroy", "c.destroy"}) {
    On(destroy, RegisterAll);
  }
  On("a.start", [](Moment& moment) { moment.result = 0; });
  On("b.start", [](Moment& moment) { *moment.outSignature = '\0'; });
  Start();
  Pass();
  VYRASetDatai(VYRAFindDataRef("test/shared"), 1);
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef("test/a")), 0);
  VYRAShutdownPlugins();
  Pass();
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef("test/c")), 0);
  EXPECT_EQ(Trace(), "c.disable other.disable c.stop c.destroy other.stop");
}

// ---- The order in which a module that is turned down goes ------------------------------------------------

TEST_F(Opening, RefusedPluginIsCleanedUpUnderItsIdThenForgottenAndOnlyThenClosed) {
  Add(main + "a.vyp", GLOBAL_MODULE);
  View inCleanup, inDestructor, inLog;
  On("a.start", [](Moment& moment) {
    static int command;
    VYRACommandBegin(&command);
    moment.result = 0;
  });
  On("a.destroy", [&](Moment&) { inDestructor = See(); });
  gHost.onCall = [&](const std::string& call) {
    if (call.starts_with("CommandEnd")) inCleanup = See();
    if (call.starts_with("DebugString(. (The plugin refused")) inLog = See();
  };
  StartTraced();
  EXPECT_EQ(Trace(), "a.construct a.start a.destroy");
  EXPECT_EQ(inLog, (View{1, 2}));
  EXPECT_EQ(inCleanup, (View{1, 2}));
  EXPECT_EQ(inDestructor, (View{0, 1}));
}

TEST_F(Opening, DuplicateIsUnloadedUnderItsIdThenForgottenAndOnlyThenLogged) {
  AddFolders(main, {"original"});
  Add(main + "a.vyp", GLOBAL_MODULE);
  Add(main + "b.vyp", GLOBAL_MODULE);
  View inStop, inDestructor, inLog;
  On("b.start", [](Moment& moment) { std::snprintf(moment.outSignature, VYRA_PLUGIN_INFO_SIZE, "test.a"); });
  On("b.stop", [&](Moment&) { inStop = See(); });
  On("b.destroy", [&](Moment&) { inDestructor = See(); });
  gHost.onCall = [&](const std::string& call) {
    if (call == "DebugString(Warning: )") inLog = See();
  };
  StartTraced();
  EXPECT_EQ(inStop, (View{2, 3}));
  EXPECT_EQ(inDestructor, (View{2, 3}));
  EXPECT_EQ(inLog, (View{0, 2}));
  EXPECT_EQ(VYRACountPlugins(), 3);
}

// ---- Modules that are met twice -----------------------------------------------------------------------

TEST_F(Opening, ModuleThatRunsIsReportedAsADuplicateAndLeftAlone) {
  const std::string sea = Add(scenery + "sea/64/lin.vyp", GLOBAL_MODULE);
  const std::string wing = Add(aircraft + "wing/64/lin.vyp", GLOBAL_MODULE);
  for (const char* start : {"sea.start", "wing.start"}) On(start, RegisterAll);
  Start();
  LoadScenery();
  LoadPlane();
  fs::create_symlink(sea, main + "link.vyp");
  Trace();
  gHost.log.clear();
  LoadScenery();
  EXPECT_EQ(gHost.log, "Fetching plugins for " + root + "Scenery/plugins\n\n" + Taken(sea, "test.sea"));
  LoadPlane();
  EXPECT_EQ(Trace(), "sea.message(0,102,0) wing.message(0,102,0)");
  Pass();
  EXPECT_EQ(Trace(), "wing.loop sea.loop");
  EXPECT_EQ(VYRACountPlugins(), 3);
  UnloadPlane();
  Trace();
  VYRAReloadPlugins();
  Pass();
  EXPECT_EQ(Trace(),
            "sea.loop sea.disable sea.stop sea.destroy link.construct link.start wing.construct wing.start "
            "link.enable wing.enable");
  gHost.log.clear();
  LoadScenery();
  EXPECT_EQ(CountOf(gHost.log, Taken(sea, "test.link")), 1) << gHost.log;
}

TEST_F(Opening, ModuleThatIsStillOpeningOrStartingIsNotStartedInside) {
  const std::string sea = Add(scenery + "sea/64/lin.vyp", GLOBAL_MODULE);
  for (const char* moment : {"sea.construct", "sea.start"}) {
    On(moment, [this](Moment&) { LoadScenery(); });
  }
  Start();
  gHost.log.clear();
  LoadScenery();
  EXPECT_EQ(Trace(), "sea.construct sea.start sea.enable");
  EXPECT_EQ(CountOf(gHost.log, Taken(sea, "")), 2) << gHost.log;
  EXPECT_EQ(VYRACountPlugins(), 2);
}

TEST_F(Opening, ModuleOnItsWayOutIsNotEnteredBeforeItIsGone) {
  const std::string wing = Add(aircraft + "wing/64/lin.vyp", GLOBAL_MODULE);
  On("wing.start", RegisterAll);
  On("wing.loop", [](Moment&) {
    UnloadPlane();
    LoadPlane();
  });
  Start();
  LoadPlane();
  Trace();
  gHost.log.clear();
  Pass();
  EXPECT_EQ(Trace(), "wing.loop wing.message(0,106,0) wing.disable wing.stop wing.destroy");
  EXPECT_EQ(CountOf(gHost.log, Taken(wing, "test.wing")), 1) << gHost.log;
  LoadPlane();
  EXPECT_EQ(Trace(), "wing.construct wing.start wing.enable");
  EXPECT_EQ(Id("wing"), 1);
}

// ---- Exceptions and hosts that call in between -----------------------------------------------------------

TEST_F(Opening, StartThatThrowsKeepsNoOtherPluginFromBeingLoadedEnabledOrUnloaded) {
  AddFolders(main, {"a", "b", "c"});
  AddFolders(scenery, {"lake", "pond", "sea"});
  AddFolders(aircraft, {"engine", "flap", "wing"});
  for (const char* start : {"b.start", "pond.start", "flap.start"}) {
    On(start, [](Moment& moment) { moment.fail(); });
  }
  EXPECT_THROW(StartTraced(), std::exception);
  EXPECT_EQ(Trace(), "a.start b.start c.start a.enable c.enable");
  EXPECT_THROW(LoadScenery(), std::exception);
  EXPECT_EQ(Trace(), "lake.start pond.start sea.start lake.enable sea.enable");
  EXPECT_THROW(LoadPlane(), std::exception);
  Trace();
  EXPECT_EQ(VYRACountPlugins(), 7);
  UnloadPlane();
  EXPECT_EQ(CountOf(Trace(), "engine.stop wing.stop"), 1);
  EXPECT_EQ(VYRACountPlugins(), 5);
}

TEST_F(Opening, PluginsOfAnAircraftAreKnownAsSuchWhileTheLaterOnesStart) {
  AddFolders(aircraft, {"engine", "wing"});
  Start();
  On("wing.start", [](Moment&) { UnloadPlane(); });
  LoadPlane();
  EXPECT_EQ(Trace(), "engine.start wing.start engine.stop wing.enable");
  UnloadPlane();
  EXPECT_EQ(CountOf(Trace(), "wing.stop"), 1);
  EXPECT_EQ(VYRACountPlugins(), 1);
}

void WaitForPlanesAndEnableEverybodyThen(const Moment& moment) {
  if (moment.message != 1) return;
  const auto enableEverybody = [](void*) {
    for (VYRAPluginID plugin = 1; plugin < VYRACountPlugins(); ++plugin) VYRAEnablePlugin(plugin);
  };
  VYRAAcquirePlanes(nullptr, enableEverybody, nullptr);
}

TEST_F(Opening, NobodyCanEnableAPluginThatIsTurnedDown) {
  AddFolders(main, {"waiter"});
  AddFolders(aircraft, {"wing"});
  On("waiter.message", WaitForPlanesAndEnableEverybodyThen);
  Start();
  const Script endings[] = {
      [](Moment& moment) { moment.result = 0; },
      [](Moment& moment) { *moment.outSignature = '\0'; },
      [](Moment& moment) { moment.fail(); },
  };
  for (const Script& ending : endings) {
    On("wing.start", [&](Moment& moment) {
      RegisterAll(moment);
      VYRAAcquirePlanes(nullptr, nullptr, nullptr);
      VYRASendMessageToPlugin(Id("waiter"), 1, nullptr);
      ending(moment);
    });
    try {
      LoadPlane();
    } catch (const std::exception&) {
    }
    EXPECT_EQ(VYRACountPlugins(), 2);
    EXPECT_EQ(CountOf(Trace(), "wing.enable"), 0);
    Pass();
    EXPECT_FALSE(IsMapped(aircraft + "wing/64/lin.vyp"));
    EXPECT_EQ(Trace(), "");
  }
}

TEST_F(Opening, ExceptionOfAStartPassesWhenItsCleanUpThrowsToo) {
  AddFolders(main, {"waiter"});
  AddFolders(aircraft, {"wing"});
  On("waiter.message", [](Moment& moment) {
    if (moment.message == 1)
      VYRAAcquirePlanes(
          nullptr, [](void*) { throw 7; }, nullptr);
  });
  Start();
  for (const bool throws : {true, false}) {
    On("wing.start", [&](Moment& moment) {
      VYRAAcquirePlanes(nullptr, nullptr, nullptr);
      VYRASendMessageToPlugin(Id("waiter"), 1, nullptr);
      RegisterAll(moment);
      if (throws) moment.fail();
      moment.result = 0;
    });
    if (throws) {
      EXPECT_THROW(LoadPlane(), std::exception);
    } else {
      EXPECT_THROW(LoadPlane(), int) << "of a plugin that refuses";
    }
    EXPECT_EQ(VYRACountPlugins(), 2);
    EXPECT_EQ(VYRAFindDataRef("test/wing"), nullptr);
    Pass();
    EXPECT_FALSE(IsMapped(aircraft + "wing/64/lin.vyp"));
  }
}

}  // namespace
