// The AI planes: who holds them, who waits, what the host is told, and models.
#include "VYRAPlanes.h"

#include <array>
#include <climits>

#include "Forwarding.h"
#include "PluginFixture.h"
#include "VYRALoaderLifecycle.h"
#include "VYRAPlanesInternal.h"

namespace {

// A plugin that acquires the planes, and what it does when it is told that they are free.
struct Waiter {
  char name;
  VYRAPluginID plugin;
  void (*action)() = nullptr;
};

class Planes : public PluginFixture {
 protected:
  Planes() {
    for (const char* name : {"one", "two", "three"}) AddPlugin(name);
  }

  static void Told(void* refcon) {
    const Waiter& waiter = *static_cast<Waiter*>(refcon);
    trace.push_back(waiter.name + std::to_string(VYRAGetMyID()));
    if (waiter.action != nullptr) waiter.action();
  }
  static int Acquire(Waiter& waiter) {
    return RunAs(waiter.plugin, [&] { return VYRAAcquirePlanes(nullptr, Told, &waiter); });
  }
  static void Release(const Waiter& holder) { RunAs(holder.plugin, VYRAReleasePlanes); }

  // a holds the planes, the other two wait.
  static void AcquireAll() {
    EXPECT_EQ(Acquire(a), 1);
    EXPECT_EQ(Acquire(b), 0);
    EXPECT_EQ(Acquire(c), 0);
  }

  static VYRAPluginID Owner() {
    VYRAPluginID owner = 99;
    VYRACountAircraft(nullptr, nullptr, &owner);
    return owner;
  }

  // The path of which the host loads a plane, when its own wish is "own".
  static std::string PathFor(int plane) {
    char path[VYRA_PLANE_PATH_SIZE] = "own";
    VYRAHandleUpdatePlaneNameAndPath(plane, nullptr, path);
    return path;
  }

  static inline Waiter a{'a', 1}, b{'b', 2}, c{'c', 3};
};

TEST_F(Planes, HaveOneHolderAndTellEveryoneWhoWaitsInTurn) {
  EXPECT_EQ(Owner(), VYRA_NO_PLUGIN);
  b.action = [] { EXPECT_EQ(Acquire(b), 1); };
  c.action = [] { EXPECT_EQ(Acquire(c), 0); };
  AcquireAll();
  EXPECT_EQ(Acquire(a), 1) << "the holder does not wait for itself";
  EXPECT_EQ(RunAs(2, [] { return VYRAAcquirePlanes(nullptr, nullptr, nullptr); }), 0);
  Release(b);
  EXPECT_EQ(Owner(), 1) << "only the holder can release";
  Release(a);
  EXPECT_EQ(trace, (Lines{"b2", "c3"}));
  EXPECT_EQ(Owner(), 2);
  c.action = nullptr;
  Release(b);
  EXPECT_EQ(trace, (Lines{"b2", "c3", "c3"})) << "who found them taken waits again";
  EXPECT_EQ(Owner(), VYRA_NO_PLUGIN);
}

TEST_F(Planes, WaiterMayTakeAndReturnThemAtOnce) {
  b.action = [] {
    EXPECT_EQ(Acquire(b), 1);
    EXPECT_EQ(Acquire(c), 0);
    VYRAReleasePlanes();
  };
  AcquireAll();
  Release(a);
  EXPECT_EQ(trace, (Lines{"b2", "c3", "c3"})) << "once for each time of asking";
  EXPECT_EQ(Owner(), VYRA_NO_PLUGIN);
}

TEST_F(Planes, WaitEndsSilentlyForWhoeverIsDisabledOrGone) {
  AcquireAll();
  Acquire(c);
  VYRADisablePlugin(2);
  UnloadOnePlugin(3);
  Release(a);
  VYRAEnablePlugin(2);
  Acquire(a);
  Release(a);
  EXPECT_EQ(trace, Lines());
}

TEST_F(Planes, PluginUnloadedByAnEarlierWaiterIsNotCalledUnderItsIdOfOld) {
  b.action = [] {
    UnloadOnePlugin(3);
    VYRALoaderGiveBackID(3);
    EXPECT_EQ(AddPlugin("next of that ID"), 3);
  };
  AcquireAll();
  Release(a);
  EXPECT_EQ(trace, Lines{"b2"});
}

TEST_F(Planes, ExceptionOfAWaiterLeavesTheOthersWaiting) {
  b.action = [] { throw 1; };
  AcquireAll();
  EXPECT_THROW(Release(a), int);
  EXPECT_EQ(VYRAGetMyID(), VYRA_HOST_PLUGIN);
  Acquire(a);
  Release(a);
  EXPECT_EQ(trace, (Lines{"b2", "c3"}));
}

TEST_F(Planes, DisablingOrLosingTheHolderFreesThem) {
  AcquireAll();
  VYRADisablePlugin(1);
  EXPECT_EQ(trace, (Lines{"b2", "c3"}));
  AcquireAll();  // a plugin that is disabled already may still take them
  RunAs(2, [] { UnloadOnePlugin(1); });
  EXPECT_EQ(trace.size(), 4U);
  EXPECT_EQ(Owner(), VYRA_NO_PLUGIN);
}

TEST_F(Planes, ReleaseGivesEveryAiPlaneBackButNotTheUsers) {
  static std::array<int, 4> off = {};
  const std::string name = "sim/private/net_disables/ai_loc[";
  for (int plane = 0; plane < 4; ++plane)
    PublishInt((name + char('0' + plane) + "]").c_str(), &off[static_cast<std::size_t>(plane)]);
  for (const int plane : {0, 1, 2, 3, 4, -1}) VYRADisableAIForPlane(plane);
  VYRAHandleGetNumberPlanesToHandle(3, 0);
  Acquire(a);
  Release(a);
  EXPECT_EQ(off, (std::array<int, 4>{1, 0, 0, 1}));
}

TEST_F(Planes, LimitOfTheHolderCountsUntilItReleases) {
  gHost.Answer("CountAircraft", 20);
  const auto active = [] {
    int total = 0, count = 0;
    VYRACountAircraft(&total, &count, nullptr);
    return std::to_string(count) + " of " + std::to_string(total);
  };
  Acquire(a);
  RunAs(2, [] { VYRASetActiveAircraftCount(3); });
  EXPECT_EQ(active(), "20 of 20");
  RunAs(1, [] { VYRASetActiveAircraftCount(5); });
  EXPECT_EQ(active(), "5 of 20");
  EXPECT_EQ(VYRAHandleGetNumberPlanesToHandle(20, 0), 5);
  EXPECT_EQ(VYRAHandleGetNumberPlanesToHandle(4, 0), 4);
  EXPECT_EQ(VYRAHandleGetNumberPlanesToHandle(20, 1), 20);
  Release(a);
  Acquire(a);
  EXPECT_EQ(active(), "20 of 20");
}

TEST_F(Planes, HostLoadsTheWishesOfTheHolder) {
  char jet[] = "jet", none[] = "";
  char* wishes[] = {jet, jet, none, nullptr};
  RunAs(1, [&] { VYRAAcquirePlanes(wishes, nullptr, nullptr); });
  jet[0] = 'x';
  RunAs(2, [] { VYRASetAircraftModel(1, "not the holder's"); });
  RunAs(1, [] {
    VYRASetAircraftModel(7, "heli");
    for (const int plane : {-1, INT_MIN, INT_MAX}) VYRASetAircraftModel(plane, "any");
    VYRASetAircraftModel(1, nullptr);
    VYRASetAircraftModel(8, "none");
    VYRASetAircraftModel(8, "");
  });
  EXPECT_EQ((Lines{PathFor(1), PathFor(7), PathFor(INT_MAX)}), (Lines{"jet", "heli", "any"}));
  for (const int plane : {0, 2, 6, 8, 1024, -1, INT_MIN}) EXPECT_EQ(PathFor(plane), "own") << plane;
  VYRAHandleUpdatePlaneNameAndPath(1, nullptr, nullptr);
  EXPECT_EQ(gHost.calls, Lines()) << "nothing is loaded before the host has said what planes there are";
  Release(a);
  EXPECT_EQ(PathFor(1), "own");
}

TEST_F(Planes, PathThatIsTooLongForAnyFileIsNoWish) {
  std::string longest(VYRA_PLANE_PATH_SIZE - 1, 'x'), tooLong(VYRA_PLANE_PATH_SIZE, 'x');
  char jet[] = "jet";
  char* wishes[] = {jet, tooLong.data(), longest.data(), nullptr};
  VYRAHandleGetNumberPlanesToHandle(4, 0);
  RunAs(1, [&] {
    VYRAAcquirePlanes(wishes, nullptr, nullptr);
    VYRASetAircraftModel(3, tooLong.c_str());
    VYRASetAircraftModel(3, longest.c_str());
    VYRASetAircraftModel(3, tooLong.c_str());
  });
  EXPECT_EQ(PathFor(1).size(), 3U) << "the host's own";
  EXPECT_EQ(PathFor(2).size(), longest.size());
  EXPECT_EQ(PathFor(3).size(), longest.size());
  EXPECT_EQ(gHost.CallsOf("SetAircraftModel").size(), 1U);
}

TEST_F(Planes, HostMayWriteCountsThatNobodyAskedFor) {
  gHost.services.CountAircraft = [](int* outTotal, int* outActive, int* outController) {
    *outTotal = *outActive = *outController = 7;
    return 20;
  };
  VYRACountAircraft(nullptr, nullptr, nullptr);
  int active = 0;
  VYRACountAircraft(nullptr, &active, nullptr);
  EXPECT_EQ(active, 20);
}

TEST_F(Planes, ModelIsLoadedAtOnceAndNotAnsweredFromTheWishesMeanwhile) {
  VYRAHandleGetNumberPlanesToHandle(3, 0);
  gHost.services.SetAircraftModel = [](int plane, const char* path, const char* fileName) {
    const bool isOuter = trace.empty();
    trace.push_back(std::to_string(plane) + " " + path + " " + fileName);
    // A plugin that the host calls meanwhile may change every wish.
    if (isOuter) VYRASetAircraftModel(1, "jet/again.acf");
    EXPECT_EQ(PathFor(2), "own");
    EXPECT_EQ(VYRAHandleGetNumberPlanesToHandle(3, 0), 3);
    if (!isOuter) return;
    VYRAReleasePlanes();
    VYRAAcquirePlanes(nullptr, nullptr, nullptr);
    VYRASetAircraftModel(5, "later");
    EXPECT_STREQ(path, "jet/jet.acf");
    throw 1;
  };
  Acquire(a);
  RunAs(1, [] {
    VYRASetActiveAircraftCount(1);
    EXPECT_THROW(VYRASetAircraftModel(2, "jet/jet.acf"), int);
  });
  EXPECT_EQ(trace, (Lines{"2 jet/jet.acf jet/jet.acf", "1 jet/again.acf jet/again.acf"}));
  EXPECT_EQ(PathFor(5), "later") << "the exception has ended the load";
}

TEST_F(Planes, UsersModelComesWithAFileNameThatCountsTheFirstCharacterAsASeparator) {
  for (const char* path : {"Jet/jet.acf", "plane", "x", "", "a/"}) VYRASetUsersAircraft(path);
  VYRASetUsersAircraft(nullptr);
  EXPECT_EQ(gHost.calls,
            (Lines{"SetAircraftModel(0|Jet/jet.acf|jet.acf)", "SetAircraftModel(0|plane|lane)",
                   "SetAircraftModel(0|x|)", "SetAircraftModel(0||)", "SetAircraftModel(0|a/|)"}));
}

TEST_F(Planes, ModelOfAPlaneFillsTheBuffersInTheOrderOfPlugins) {
  gHost.planePath = "Jet/jet.acf";
  gHost.planeFileName = "jet.acf";
  char fileName[256], path[512];
  VYRAGetNthAircraftModel(0, nullptr, path);
  VYRAGetNthAircraftModel(0, fileName, nullptr);
  EXPECT_EQ(std::string(fileName) + " " + path, "jet.acf Jet/jet.acf");
}

TEST_F(Planes, DrawingAndStartingAnewAreForTheHolder) {
  Acquire(a);
  for (const VYRAPluginID plugin : {2, 1}) {
    RunAs(plugin, [] {
      VYRADrawAircraft(1, 2, 3, 4, 5, 6, 7, 8, nullptr);
      VYRAReinitUsersPlane();
    });
  }
  gHost.services.hostVersion = 567;
  RunAs(1, VYRAReinitUsersPlane);
  EXPECT_EQ(gHost.calls, (Lines{"DrawAircraft(1,2,3,4,5,6,7,8,0)", "ReinitUsersPlane(208,201)"}));
  ExpectForwards(VYRAPlaceUserAtAirport, &VYRAHostServices::PlaceUserAtAirport);
}

}  // namespace
