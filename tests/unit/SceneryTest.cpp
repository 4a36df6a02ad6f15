// Terrain probes, and scenery objects that are loaded at once or later, drawn and released.
#include "VYRAScenery.h"

#include <tuple>

#include "Forwarding.h"
#include "PluginFixture.h"
#include "VYRALoaderLifecycle.h"
#include "VYRASceneryObjects.h"
#include "VYRASceneryProbes.h"

namespace {

VYRAObjectRef Ref(std::uintptr_t number) { return reinterpret_cast<VYRAObjectRef>(number); }

class Probes : public PluginFixture {
 protected:
  Probes() {
    gHost.services.CreateProbe = [] { return ++lastIndex; };
    gHost.services.ProbeTerrainXYZ = [](int probe, const float* point, float* location, float* normal,
                                        float* velocity, int* isWet) {
      location[0] = point[0];
      normal[1] = point[1];
      velocity[2] = point[2];
      *isWet = 30;
      probed += std::to_string(probe);
      return hit;
    };
  }

  static VYRAProbeRef Create() { return VYRACreateProbe(VYRA_PROBE_VERTICAL); }
  static int Probe(VYRAProbeRef probe, int size = sizeof(VYRAProbeInfo)) {
    info.size = size;
    return VYRAProbeTerrainXYZ(probe, 1, 2, 3, &info);
  }

  static inline int lastIndex = 0;
  static inline int hit = 1;
  static inline std::string probed;
  static inline VYRAProbeInfo info = {};
};

TEST_F(Probes, HostWritesWhatItFoundIntoTheRecordOfGoodCallsAlone) {
  const VYRAProbeRef probe = Create();
  const VYRAProbeRef gone = Create();
  VYRADestroyProbe(gone);
  for (const VYRAProbeRef wrong :
       {VYRAProbeRef{}, VYRACreateProbe(1), gone, static_cast<VYRAProbeRef>(Ref(8))}) {
    EXPECT_EQ(Probe(wrong), VYRA_PROBE_ERROR);
  }
  EXPECT_EQ(Probe(probe, 40), VYRA_PROBE_ERROR);
  EXPECT_EQ(VYRAProbeTerrainXYZ(probe, 0, 0, 0, nullptr), VYRA_PROBE_ERROR);
  EXPECT_EQ(probed, "");
  EXPECT_EQ(Probe(probe), VYRA_PROBE_HIT);
  EXPECT_EQ(std::tuple(info.location[0], info.normal[1], info.velocity[2]), std::tuple(1, 2, 3));
  EXPECT_EQ(info.isWet, 30);
  hit = 0;
  EXPECT_EQ(Probe(probe), VYRA_PROBE_MISSED);
}

TEST_F(Probes, ProbesOfTheHostAreUsedAgainFromTheLowestOn) {
  VYRAProbeRef probes[5];
  for (VYRAProbeRef& probe : probes) probe = Create();
  VYRADestroyProbe(probes[4]);
  for (int i = 0; i < 2; ++i) RunAs(AddPlugin("not its owner"), [&] { VYRADestroyProbe(probes[1]); });
  for (int i = 0; i < 3; ++i) Probe(Create());
  EXPECT_EQ(probed, "256");
}

TEST_F(Probes, PluginThatLeavesTakesOnlyItsOwnAlong) {
  const VYRAPluginID leaver = AddPlugin("a");
  RunAs(leaver, Create);
  const VYRAProbeRef kept = RunAs(AddPlugin("b"), Create);
  RunAs(leaver, Create);
  UnloadOnePlugin(leaver);
  EXPECT_EQ(Probe(kept), VYRA_PROBE_HIT);
  EXPECT_EQ(gFreeProbes, (std::set<int>{1, 3}));
}

TEST_F(Probes, HandleOfADestroyedProbeIsNotThatOfTheNext) {
  const VYRAProbeRef probe = Create();
  VYRADestroyProbe(probe);
  EXPECT_NE(Create(), probe);
}

class Objects : public PluginFixture {
 protected:
  Objects() {
    gHost.services.LoadObjectAsync = [](const char*, VYRAObjectLoaded_f completion, void* delivery) {
      pending.emplace_back([=](std::uintptr_t object) { completion(Ref(object), delivery); });
    };
  }

  static void Ready(VYRAObjectRef object, void*) {
    trace.push_back(std::to_string(reinterpret_cast<std::uintptr_t>(object)) + " to " +
                    std::to_string(VYRAGetMyID()));
  }
  // As the plugin: the host has this object for its load, null for a load that fails.
  void Load(int object) const {
    gHost.Answer("LoadObject", object);
    EXPECT_EQ(RunAs(plugin, [] { return VYRALoadObject("x"); }), Ref(static_cast<std::uintptr_t>(object)));
  }
  void LoadAsync(const char* path, VYRAObjectReady_f ready = Ready) const {
    RunAs(plugin, [&] { VYRALoadObjectAsync(path, ready, nullptr); });
  }
  static void UnloadAs(VYRAPluginID caller, std::uintptr_t object) {
    RunAs(caller, [&] { VYRAUnloadObject(Ref(object)); });
  }

  static inline std::vector<std::function<void(std::uintptr_t object)>> pending;
  VYRAPluginID plugin = AddPlugin("a");
  VYRAPluginID other = AddPlugin("b");
  const std::string unknown = ": Unknown object for VYRAUnloadObject";
};

TEST_F(Objects, EachLoadIsReleasedOnceByItsOwnPlugin) {
  for (const int object : {0, 5, 5}) Load(object);
  EXPECT_EQ(RunAs(plugin, [] { return VYRALoadObject(nullptr); }), nullptr);
  UnloadAs(plugin, 0);  // a load that failed owns nothing
  UnloadAs(other, 5);
  for (int i = 0; i < 3; ++i) UnloadAs(plugin, 5);
  EXPECT_EQ(gHost.CallsOf("UnloadObject"), (Lines{"UnloadObject(5)", "UnloadObject(5)"}));
  EXPECT_EQ(errors, (Lines{"1" + unknown, "2" + unknown, "1" + unknown}));
}

TEST_F(Objects, PluginThatLeavesReleasesWhatItStillHasAndItsSuccessorOwnsNothing) {
  for (const int object : {7, 6, 7}) Load(object);
  RunAs(other, [] { VYRALoadObject("x"); });
  UnloadOnePlugin(plugin);
  UnloadAs(plugin, 6);
  EXPECT_EQ(gHost.CallsOf("UnloadObject"), (Lines{"UnloadObject(7)", "UnloadObject(6)", "UnloadObject(7)"}));
  EXPECT_EQ(VYRACountLoadedObjects(other), 1U);
}

TEST_F(Objects, ReleasingOfALeaversObjectsGoesOnAfterAnException) {
  for (const int object : {7, 8, 9}) Load(object);
  gHost.services.UnloadObject = [](VYRAObjectRef object) {
    trace.push_back(std::to_string(reinterpret_cast<std::uintptr_t>(object)));
    if (object == Ref(7)) throw 1;
  };
  EXPECT_THROW(VYRASceneryCleanupHook(plugin), int);
  VYRASceneryCleanupHook(plugin);
  EXPECT_EQ(trace, (Lines{"7", "8", "9"}));
}

TEST_F(Objects, MistakesInDrawingAreSeenOnlyForPluginsThatHearOfThem) {
  const VYRADrawInfo places[] = {{28, 1, 2, 3, 4, 5, 6}, {24, 11, 12, 13, 14, 15, 16}};
  const auto draw = [&] {
    VYRADrawObjects(Ref(6), 0, places, 8, 9);
    for (const int count : {2, -1}) VYRADrawObjects(Ref(5), count, places, 8, 9);
    VYRADrawObjects(Ref(5), 2, nullptr, 8, 9);
    VYRADrawObjects(Ref(5), 1, places, 8, 9);
  };
  Load(5);
  RunAs(plugin, draw);
  EXPECT_EQ(errors, (Lines{"1: Illegal object, or object not owned by this plugin.",
                           "1: Struct size mismatch for VYRADrawObjects"}));
  const std::string first = "DrawObjects(5,8,9,1,2,3,5,4,6)";  // the heading in front of the pitch
  EXPECT_EQ(gHost.CallsOf("DrawObjects"), Lines{first});
  Record(plugin).error = nullptr;
  RunAs(plugin, draw);
  EXPECT_EQ(gHost.CallsOf("DrawObjects"),
            (Lines{first, first, "DrawObjects(5,8,9,11,12,13,15,14,16)", first}));
}

TEST_F(Objects, LoadedInTheBackgroundBelongToThePluginFromItsCallbackOn) {
  LoadAsync("x", [](VYRAObjectRef object, void*) {
    VYRAUnloadObject(object);
    throw 1;
  });
  EXPECT_THROW(pending[0](9), int);
  EXPECT_EQ(VYRAGetMyID(), VYRA_HOST_PLUGIN);
  EXPECT_EQ(errors, Lines{"1" + unknown}) << "not yet inside the callback";
  UnloadAs(plugin, 9);
  EXPECT_EQ(gHost.calls, Lines{"UnloadObject(9)"});
}

TEST_F(Objects, LoadMayBeCompletedBeforeItsServiceReturnsOrFail) {
  gHost.services.LoadObjectAsync = [](const char*, VYRAObjectLoaded_f completion, void* delivery) {
    RunAs(VYRA_HOST_PLUGIN, [&] { completion(Ref(9), delivery); });
  };
  LoadAsync("x");
  LoadAsync(nullptr);
  EXPECT_EQ(trace, (Lines{"9 to 1", "0 to 1"}));
  LoadAsync("x", nullptr);
  EXPECT_EQ(VYRACountLoadedObjects(plugin), 2U) << "also without a callback";
}

TEST_F(Objects, LoadWaitsForADisabledPluginAndIsReleasedWhenItsPluginLeft) {
  for (int i = 0; i < 4; ++i) LoadAsync("x");
  VYRADisablePlugin(plugin);
  pending[0](9);
  EXPECT_EQ(trace, Lines());
  VYRAEnablePlugin(plugin);
  VYRADisablePlugin(plugin);
  pending[1](10);
  UnloadOnePlugin(plugin);
  pending[2](11);
  pending[3](0);
  EXPECT_EQ(trace, Lines{"9 to 1"});
  EXPECT_EQ(gHost.calls,
            (Lines{"UnloadObject(10)", "UnloadObject(9)", "UnloadObject(11)", "UnloadObject(0)"}));
}

TEST_F(Objects, LookUpIsTheHosts) { ExpectForwards(VYRALookupObjects, &VYRAHostServices::LookupObjects); }

}  // namespace
