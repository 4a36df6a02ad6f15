// Taking plugins down: exceptions from everywhere in it, modules that an exception keeps open, and what is
// given out again only when it is free.
#include <exception>
#include <filesystem>

#include "ModuleTest.h"

namespace {

class Teardown : public ModuleTest {
 protected:
  // Calls until no exception comes any more; how many came.
  template <class Call>
  static int ExceptionsOf(Call call) {
    for (int exceptions = 0; exceptions < 100; ++exceptions) {
      try {
        call();
        return exceptions;
      } catch (const std::exception&) {
      }
    }
    ADD_FAILURE() << "There is no end of exceptions.";
    return 100;
  }

  void Throw(std::initializer_list<const char*> moments) {
    for (const char* moment : moments) On(moment, [](Moment& thrower) { thrower.fail(); });
  }
};

TEST_F(Teardown, ShutdownLeftByExceptionsGoesOnWhereItEnded) {
  AddFolders(main, {"a", "b", "c"});
  Throw({"a.disable", "a.stop", "b.stop", "c.disable"});
  Start();
  EXPECT_EQ(ExceptionsOf(VYRAShutdownPlugins), 4);
  EXPECT_EQ(Trace(), "a.disable b.disable c.disable a.stop b.stop c.stop");
  EXPECT_EQ(VYRACountPlugins(), 0);
  for (const char* name : {"a", "b", "c"}) EXPECT_FALSE(IsMapped(main + name + "/64/lin.vyp")) << name;
}

TEST_F(Teardown, UnloadOfAnAircraftGoesOnWithTheNextEvent) {
  AddFolders(aircraft, {"engine", "flap", "wing"});
  Throw({"engine.disable", "flap.stop", "wing.stop"});
  Start();
  LoadPlane();
  Trace();
  EXPECT_EQ(ExceptionsOf(UnloadPlane), 3);
  const std::string trace = Trace();
  for (const char* call : {"engine.disable", "wing.disable", "engine.stop", "flap.stop", "wing.stop"}) {
    EXPECT_EQ(CountOf(trace, call), 1) << call << " in " << trace;
  }
  EXPECT_EQ(VYRACountPlugins(), 1);
}

TEST_F(Teardown, ReloadLeftByExceptionsIsCarriedOnByTheNextPasses) {
  AddFolders(main, {"a", "b"});
  AddFolders(aircraft, {"wing"});
  Throw({"b.disable", "wing.stop", "a.stop", "b.start", "a.enable"});
  EXPECT_THROW(Start(), std::exception);
  On("b.start", [](Moment&) {});
  EXPECT_THROW(VYRAShutdownPlugins(), std::exception);
  VYRAShutdownPlugins();
  EXPECT_THROW(Start(), std::exception);
  VYRAEnablePlugin(Id("b"));
  LoadPlane();
  Throw({"b.start"});
  int failures = 1;
  gHost.onCall = [&](const std::string& call) {
    if (call.starts_with("ShowMessage") && failures-- > 0) throw std::exception();
  };
  Trace();
  VYRAReloadPlugins();
  EXPECT_EQ(ExceptionsOf(Pass), 5);
  EXPECT_EQ(Trace(),
            "b.disable wing.disable wing.stop a.stop b.stop a.start b.start wing.start a.enable "
            "wing.enable");
  EXPECT_EQ(gHost.CallsOf("ShowMessage").size(), 1u);
  Pass();
  EXPECT_EQ(Trace(), "");
}

TEST_F(Teardown, ShutdownComesInsteadOfAReloadThatAnExceptionLeft) {
  AddFolders(main, {"a"});
  Throw({"a.stop"});
  Start();
  VYRAReloadPlugins();
  EXPECT_THROW(Pass(), std::exception);
  VYRAShutdownPlugins();
  Start();
  Pass();
  EXPECT_EQ(Trace(), "");
}

TEST_F(Teardown, PluginStoppedInItsOwnEnableStaysOut) {
  AddFolders(aircraft, {"wing"});
  Throw({"wing.stop"});
  On("wing.enable", [](Moment&) {
    EXPECT_THROW(UnloadPlane(), std::exception);
    EXPECT_EQ(VYRAEnablePlugin(1), 0);
  });
  Start();
  LoadPlane();
  EXPECT_EQ(VYRAIsPluginEnabled(1), 0);
  EXPECT_EQ(VYRAEnablePlugin(1), 0);
  Event(VYRA_EVENT_BROADCAST_101);
  EXPECT_EQ(Trace(), "wing.start wing.enable wing.stop");
  UnloadPlane();
  EXPECT_EQ(VYRACountPlugins(), 1);
}

// ---- Modules that an exception keeps open ----------------------------------------------------------------

TEST_F(Teardown, ModuleStaysOpenWhileTheHostHandlesAnExceptionOfIts) {
  AddFolders(main, {"a"});
  const std::string module = main + "a/64/lin.vyp";
  On("a.start", RegisterAll);
  Throw({"a.loop"});
  Start();
  try {
    Pass();
    FAIL();
  } catch (const std::exception& exception) {
    VYRAShutdownPlugins();
    EXPECT_TRUE(IsMapped(module));
    EXPECT_STREQ(exception.what(), "a");  // the text and its function are the module's
    EXPECT_EQ(VYRACountPlugins(), 0);
  }
  Start();
  EXPECT_EQ(Id("a"), 1);
  VYRAShutdownPlugins();
  EXPECT_FALSE(IsMapped(module));
}

TEST_F(Teardown, ModuleStaysOpenWhileAnExceptionOfItsPassesTheHost) {
  class ShutsDown {
   public:
    ~ShutsDown() { VYRAShutdownPlugins(); }
  };
  AddFolders(main, {"a"});
  On("a.start", RegisterAll);
  Throw({"a.loop"});
  Start();
  try {
    const ShutsDown atTheEnd;
    Pass();
    FAIL();
  } catch (const std::exception& exception) {
    EXPECT_STREQ(exception.what(), "a");
  }
  Event(VYRA_EVENT_UNUSED);
  EXPECT_FALSE(IsMapped(main + "a/64/lin.vyp"));
}

TEST_F(Teardown, ReloadWaitsForTheModulesThatAnExceptionKeepsOpen) {
  AddFolders(main, {"a"});
  On("a.start", RegisterAll);
  Throw({"a.loop"});
  Start();
  try {
    Pass();
  } catch (const std::exception& exception) {
    On("a.loop", [](Moment&) {});
    VYRAReloadPlugins();
    Pass();
    EXPECT_STREQ(exception.what(), "a");
    EXPECT_EQ(Trace(), "a.loop a.loop a.disable a.stop");
  }
  Pass();
  EXPECT_EQ(Trace(), "a.start a.enable");
}

// ---- What is given out again
// ---------------------------------------------------------------------------------

TEST_F(Teardown, IdOfAPluginUnloadedInAPassIsFreeBeforeTheReloadBehindThePass) {
  AddFolders(main, {"a"});
  AddFolders(aircraft, {"wing"});
  for (const char* start : {"a.start", "b.start", "wing.start"}) On(start, RegisterAll);
  On("wing.loop", [this](Moment&) {
    UnloadPlane();
    AddFolders(main, {"b"});
    VYRAReloadPlugins();
  });
  Start();
  LoadPlane();
  gHost.planePath = "";
  Pass();
  ASSERT_EQ(Id("b"), 2) << "the ID that wing had";
  Trace();
  Pass();
  EXPECT_EQ(Trace(), "b.loop a.loop");
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef("test/b")), 7);
}

TEST_F(Teardown, IdsOfAircraftUnloadedInsidePluginsAreGivenOutAgainAfterwards) {
  AddFolders(aircraft, {"engine", "wing"});
  On("wing.start", RegisterAll);
  On("wing.loop", [](Moment&) { UnloadPlane(); });
  Start();
  for (int round = 0; round < 3; ++round) {
    LoadPlane();
    EXPECT_EQ(Id("wing"), 2);
    Pass();
    EXPECT_EQ(VYRACountPlugins(), 1);
  }
}

TEST_F(Teardown, StopsThatLoadEachOtherComeToAnEnd) {
  AddFolders(scenery, {"sea"});
  AddFolders(root + "Other/plugins/", {"lake"});
  On("sea.stop", [this](Moment&) { Event(VYRA_EVENT_SCENERY_PACKAGE, (root + "Other/").c_str()); });
  On("lake.stop", [this](Moment&) { LoadScenery(); });
  Start();
  LoadScenery();
  Trace();
  VYRAShutdownPlugins();
  EXPECT_EQ(Trace(), "sea.disable sea.stop lake.start lake.enable lake.stop");
  EXPECT_EQ(VYRACountPlugins(), 0);
}

TEST_F(Teardown, AircraftLoadedByAStopOfTheOneBeforeStays) {
  AddFolders(aircraft, {"wing"});
  AddFolders(root + "Other/plugins/", {"flap"});
  On("wing.stop", [this](Moment&) {
    gHost.planePath = root + "Other/other.acf";
    LoadPlane();
  });
  Start();
  LoadPlane();
  Trace();
  UnloadPlane();
  EXPECT_EQ(VYRAIsPluginEnabled(Id("flap")), 1);
  UnloadPlane();
  EXPECT_EQ(VYRACountPlugins(), 1);
}

}  // namespace
