// Starting and stopping the library from inside anything, and what the host's own callbacks get while there
// are no plugins.
#include <exception>
#include <ostream>
#include <utility>

#include "ModuleTest.h"
#include "VYRADisplay.h"
#include "VYRAScenery.h"

namespace {

// ---- Without plugins
// ------------------------------------------------------------------------------------------

class WithoutPlugins : public ModuleTest {
 protected:
  WithoutPlugins() {
    AddFolders(main, {"a"});
    AddFolders(aircraft, {"wing"});
    AddFolders(scenery, {"sea"});
    VYRARegisterFlightLoopCallback(CountPass, -1, nullptr);
    VYRARegisterDrawCallback(CountDrawing, 5, 1, nullptr);
  }
  ~WithoutPlugins() override {
    VYRAUnregisterFlightLoopCallback(CountPass, nullptr);
    VYRAUnregisterDrawCallback(CountDrawing, 5, 1, nullptr);
  }

  // Every event and hook reaches the host's own callbacks, and none loads a plugin.
  void ExpectHostAlone() {
    const int cycle = VYRAGetCycleNumber();
    passes = drawings = 0;
    for (int event = -1; event <= 14; ++event) EXPECT_EQ(Event(event, nullptr), 1) << event;
    LoadScenery();
    EXPECT_EQ(VYRADoDrawingHook(2, 0), 0);
    EXPECT_EQ(VYRAGetCycleNumber(), cycle + 2);
    EXPECT_EQ(passes, 1) << "in the first phase";
    EXPECT_EQ(drawings, 1);
    EXPECT_EQ(VYRACountPlugins(), 0);
    EXPECT_EQ(Trace(), "");
  }

 private:
  static float CountPass(float, float, int, void*) {
    ++passes;
    return -1;
  }
  static int CountDrawing(int, int, void*) {
    ++drawings;
    return 0;
  }
  static inline int passes = 0;
  static inline int drawings = 0;
};

TEST_F(WithoutPlugins, HostsOwnCallbacksAreCalledBeforeTheStartAfterTheShutdownAndInAReload) {
  ExpectHostAlone();
  EXPECT_EQ(VYRAInitialized(), 0);
  Start();
  VYRAShutdownPlugins();
  Trace();
  ExpectHostAlone();
  Start();
  int messages = 0;
  gHost.onCall = [&](const std::string& call) {
    if (!call.starts_with("ShowMessage")) return;
    ++messages;
    EXPECT_EQ(Trace(), "a.disable a.stop");
    ExpectHostAlone();
  };
  VYRAReloadPlugins();
  Pass();
  EXPECT_EQ(messages, 1);
  EXPECT_EQ(Trace(), "a.start wing.start a.enable wing.enable");
}

// ---- Starts and shutdowns from inside
// -------------------------------------------------------------------------

struct Place {
  const char* name;
  const char* moment;  // of the plugin a, or null for a service
  const char* service;
  friend void PrintTo(const Place& place, std::ostream* out) { *out << place.name; }
};

constexpr Place kPlaces[] = {
    {"Construct", "a.construct", nullptr},
    {"Start", "a.start", nullptr},
    {"Enable", "a.enable", nullptr},
    {"Disable", "a.disable", nullptr},
    {"Stop", "a.stop", nullptr},
    {"Destroy", "a.destroy", nullptr},
    {"Loop", "a.loop", nullptr},
    {"ShowMessage", nullptr, "ShowMessage"},
    {"Log", nullptr, "DebugString(Loaded"},
    {"MissingSymbol", nullptr, "DebugString(dlerror"},
    {"LoadingStatus", nullptr, "ShowLoadingStatus"},
    {"SystemPath", nullptr, "GetSystemPath"},
    {"PlanePath", nullptr, "GetNthAircraftModel"},
    {"FirstMenu", nullptr, "CreateMenu"},
};

class StartAndShutdownInside : public ModuleTest, public testing::WithParamInterface<Place> {
 protected:
  StartAndShutdownInside() {
    Add(main + "a.vyp", GLOBAL_MODULE);
    Add(main + "bare.vyp", BARE_MODULE);
    AddFolders(main, {"z"});
    AddFolders(aircraft, {"wing"});
  }

  // Does something once, at the place.
  void At(const std::function<void()>& what) {
    const auto once = [this, what] {
      if (!std::exchange(done, true)) what();
    };
    On("a.start", RegisterAll);
    if (GetParam().moment != nullptr) {
      On(GetParam().moment, [once](Moment& moment) {
        if (std::string(moment.call) == "start") RegisterAll(moment);
        once();
      });
    } else {
      gHost.onCall = [once](const std::string& call) {
        if (call.starts_with(GetParam().service)) once();
      };
    }
  }

  // Goes through every stage of a life.
  void Live() {
    StartTraced();
    LoadPlane();
    Pass();
    VYRAReloadPlugins();
    Pass();
    UnloadPlane();
  }

  static int CountHosts() {
    int hosts = 0;
    for (VYRAPluginID plugin = 0; plugin < VYRACountPlugins(); ++plugin) {
      hosts += CountOf(InfoOf(plugin), "|brelund.skyvora.skyvora|");
    }
    return hosts;
  }

  // The host's record, if there is any, is plugin 0 and stands alone.
  static void ExpectOrder() {
    EXPECT_EQ(CountHosts(), VYRACountPlugins() > 0 ? 1 : 0);
    EXPECT_EQ(VYRAFindPluginByPath("brelund.skyvora.skyvora"), VYRACountPlugins() > 0 ? 0 : -1);
    EXPECT_EQ(VYRAGetMyID(), 0);
  }

  bool done = false;
};

TEST_P(StartAndShutdownInside, LeaveOneHostAndNoPluginOfAnotherLife) {
  const std::function<void()> everything[] = {
      [this] { StartTraced(); },
      [] { VYRAShutdownPlugins(); },
      [this] {
        VYRAShutdownPlugins();
        StartTraced();
      },
  };
  for (const auto& what : everything) {
    done = false;
    At(what);
    Live();
    EXPECT_TRUE(done);
    ExpectOrder();
    // Whatever came of it, the next life is like any other.
    gHost.onCall = nullptr;
    VYRAShutdownPlugins();
    EXPECT_EQ(VYRACountPlugins(), 0);
    Trace();
    StartTraced();
    EXPECT_EQ(Trace(), "a.construct a.start z.start a.enable z.enable");
    EXPECT_EQ(Id("a"), 1);
    Pass();
    EXPECT_EQ(Trace(), "a.loop");
    ExpectOrder();
    VYRAShutdownPlugins();
    Trace();
  }
}

TEST_P(StartAndShutdownInside, LoadOfAnObjectIsNotCompletedInTheNextLife) {
  static VYRAObjectLoaded_f complete = nullptr;
  static void* delivery = nullptr;
  static int completions = 0;
  complete = nullptr;
  completions = 0;
  gHost.services.LoadObjectAsync = [](const char*, VYRAObjectLoaded_f completion, void* load) {
    complete = completion;
    delivery = load;
  };
  At([] {
    const auto load = [] {
      VYRALoadObjectAsync(
          "x", [](VYRAObjectRef, void*) { ++completions; }, nullptr);
    };
    VYRAShutdownPlugins();
    if (GetParam().moment != nullptr) load();
  });
  Live();
  gHost.onCall = nullptr;
  VYRAShutdownPlugins();
  Start();
  if (complete != nullptr) complete(nullptr, delivery);
  EXPECT_EQ(completions, 0);
  EXPECT_EQ(complete != nullptr, GetParam().moment != nullptr);
}

INSTANTIATE_TEST_SUITE_P(Places, StartAndShutdownInside, testing::ValuesIn(kPlaces),
                         [](const auto& place) { return std::string(place.param.name); });

}  // namespace
