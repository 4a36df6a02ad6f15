// The AI planes: who holds them, who waits, what the host is told, and models.
#include "VYRAPlanes.h"

#include <climits>
#include <string>
#include <vector>

#include "Forwarding.h"
#include "PluginFixture.h"
#include "VYRALoaderLifecycle.h"
#include "VYRAPlanesControl.h"

namespace {

// Who waits: a name, and what it does when it is told.
struct Waiter {
  char name;
  void (*action)(Waiter& self) = nullptr;
};

class Planes : public PluginFixture {
 protected:
  static void Told(void* refcon) {
    Waiter& waiter = *static_cast<Waiter*>(refcon);
    trace.push_back(waiter.name + std::to_string(VYRAGetMyID()));
    if (waiter.action != nullptr) waiter.action(waiter);
  }
  static int Acquire(Waiter& waiter) { return VYRAAcquirePlanes(nullptr, Told, &waiter); }
  static int AcquireAs(VYRAPluginID plugin, Waiter& waiter) {
    return RunAs(plugin, [&] { return Acquire(waiter); });
  }
  static void Release(VYRAPluginID plugin) { RunAs(plugin, VYRAReleasePlanes); }

  // The first plugin holds the planes, the other two wait.
  void AcquireAll() {
    EXPECT_EQ(AcquireAs(one, a), 1);
    EXPECT_EQ(AcquireAs(two, b), 0);
    EXPECT_EQ(AcquireAs(three, c), 0);
  }

  static VYRAPluginID Owner() {
    VYRAPluginID owner = 99;
    VYRACountAircraft(nullptr, nullptr, &owner);
    return owner;
  }

  // The path of which the host loads a plane, when its own wish is "own".
  static std::string PathFor(int plane) {
    char path[64] = "own";
    VYRAHandleUpdatePlaneNameAndPath(plane, nullptr, path);
    return path;
  }

  VYRAPluginID one = AddPlugin("one");
  VYRAPluginID two = AddPlugin("two");
  VYRAPluginID three = AddPlugin("three");
  static inline Waiter a{'a'}, b{'b'}, c{'c'};
};

TEST_F(Planes, HaveOneHolderAndTellEveryoneWhoWaitsInTurn) {
  EXPECT_EQ(Owner(), VYRA_NO_PLUGIN);
  b.action = c.action = [](Waiter& self) { EXPECT_EQ(Acquire(self), VYRAGetMyID() == 2 ? 1 : 0); };
  AcquireAll();
  EXPECT_EQ(AcquireAs(one, a), 1) << "the holder does not wait for itself";
  EXPECT_EQ(RunAs(two, [] { return VYRAAcquirePlanes(nullptr, nullptr, nullptr); }), 0);
  Release(two);
  EXPECT_EQ(Owner(), one) << "only the holder can release";
  Release(one);
  EXPECT_EQ(trace, (Lines{"b2", "c3"}));
  EXPECT_EQ(Owner(), two);
  c.action = nullptr;
  Release(two);
  EXPECT_EQ(trace, (Lines{"b2", "c3", "c3"})) << "who found them taken waits again";
  EXPECT_EQ(Owner(), VYRA_NO_PLUGIN);
}

TEST_F(Planes, WaiterMayTakeAndReturnThemAtOnce) {
  b.action = [](Waiter& self) {
    EXPECT_EQ(Acquire(self), 1);
    EXPECT_EQ(AcquireAs(3, c), 0);
    VYRAReleasePlanes();
  };
  AcquireAll();
  Release(one);
  EXPECT_EQ(trace, (Lines{"b2", "c3", "c3"})) << "once for each time of asking";
  EXPECT_EQ(Owner(), VYRA_NO_PLUGIN);
}

TEST_F(Planes, WaitEndsSilentlyForWhoeverIsDisabledOrGone) {
  AcquireAll();
  AcquireAs(three, c);
  VYRADisablePlugin(two);
  UnloadOnePlugin(three);
  Release(one);
  VYRAEnablePlugin(two);
  AcquireAs(one, a);
  Release(one);
  EXPECT_EQ(trace, Lines());
}

TEST_F(Planes, PluginUnloadedByAnEarlierWaiterIsNotCalledUnderItsIdOfOld) {
  b.action = [](Waiter&) {
    UnloadOnePlugin(3);
    VYRALoaderDropLastRecord(3);
    EXPECT_EQ(AddPlugin("next of that ID"), 3);
  };
  AcquireAll();
  Release(one);
  EXPECT_EQ(trace, Lines{"b2"});
}

TEST_F(Planes, ExceptionOfAWaiterLeavesTheOthersWaiting) {
  b.action = [](Waiter&) { throw 1; };
  AcquireAll();
  EXPECT_THROW(Release(one), int);
  EXPECT_EQ(VYRAGetMyID(), VYRA_HOST_PLUGIN);
  AcquireAs(one, a);
  Release(one);
  EXPECT_EQ(trace, (Lines{"b2", "c3"}));
}

TEST_F(Planes, DisablingOrLosingTheHolderFreesThem) {
  AcquireAll();
  VYRADisablePlugin(one);
  EXPECT_EQ(trace, (Lines{"b2", "c3"}));
  AcquireAll();  // a plugin that is disabled already may still take them
  RunAs(two, [&] { UnloadOnePlugin(one); });
  EXPECT_EQ(trace.size(), 4U);
  EXPECT_EQ(Owner(), VYRA_NO_PLUGIN);
}

TEST_F(Planes, ReleaseGivesEveryAiPlaneBackButNotTheUsers) {
  static int off[4] = {};
  for (int plane = 0; plane < 4; ++plane) {
    PublishInt(("sim/private/net_disables/ai_loc[" + std::to_string(plane) + "]").c_str(), &off[plane]);
  }
  for (const int plane : {0, 1, 2, 3, 4, -1}) VYRADisableAIForPlane(plane);
  AcquireAs(one, a);
  Release(one);
  EXPECT_EQ(off[1], 1) << "the host has not said how many there are";
  VYRAHandleGetNumberPlanesToHandle(3, 0);
  AcquireAs(one, a);
  Release(one);
  EXPECT_EQ(off[0] * 1000 + off[1] * 100 + off[2] * 10 + off[3], 1001);
}

TEST_F(Planes, LimitOfTheHolderCountsUntilItReleases) {
  gHost.Answer("CountAircraft", 20);
  const auto active = [] {
    int total = 0;
    int count = 0;
    VYRACountAircraft(&total, &count, nullptr);
    EXPECT_EQ(total, 20);
    return count;
  };
  AcquireAs(one, a);
  RunAs(two, [] { VYRASetActiveAircraftCount(3); });
  EXPECT_EQ(active(), 20);
  RunAs(one, [] { VYRASetActiveAircraftCount(5); });
  EXPECT_EQ(active(), 5);
  EXPECT_EQ(VYRAHandleGetNumberPlanesToHandle(20, 0), 5);
  EXPECT_EQ(VYRAHandleGetNumberPlanesToHandle(4, 0), 4);
  EXPECT_EQ(VYRAHandleGetNumberPlanesToHandle(20, 1), 20);
  Release(one);
  AcquireAs(one, a);
  EXPECT_EQ(active(), 20);
}

TEST_F(Planes, HostLoadsTheWishesOfTheHolder) {
  char jet[] = "jet";
  char none[] = "";
  char* wishes[] = {jet, jet, none, nullptr};
  RunAs(one, [&] { VYRAAcquirePlanes(wishes, nullptr, nullptr); });
  jet[0] = 'x';
  RunAs(two, [] { VYRASetAircraftModel(1, "not the holder's"); });
  RunAs(one, [] {
    VYRASetAircraftModel(7, "heli");
    for (const int plane : {-1, INT_MIN, VYRA_MOST_PLANES, INT_MAX}) VYRASetAircraftModel(plane, "x");
    VYRASetAircraftModel(1, nullptr);
  });
  EXPECT_EQ(PathFor(1) + PathFor(7), "jetheli");
  for (const int plane : {0, 2, 6, 8, -1, VYRA_MOST_PLANES}) EXPECT_EQ(PathFor(plane), "own") << plane;
  VYRAHandleUpdatePlaneNameAndPath(1, nullptr, nullptr);
  EXPECT_EQ(gHost.calls, Lines()) << "nothing is loaded before the host has said what planes there are";
  Release(one);
  EXPECT_EQ(PathFor(1), "own");
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
    EXPECT_STREQ(path, "jet/jet.acf");
    VYRAAcquirePlanes(nullptr, nullptr, nullptr);
    VYRASetAircraftModel(5, "later");
    throw 1;
  };
  RunAs(one, [] {
    VYRAAcquirePlanes(nullptr, nullptr, nullptr);
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
  char fileName[256];
  char path[512];
  VYRAGetNthAircraftModel(0, nullptr, path);
  VYRAGetNthAircraftModel(0, fileName, nullptr);
  EXPECT_STREQ(fileName, "jet.acf");
  EXPECT_STREQ(path, "Jet/jet.acf");
}

TEST_F(Planes, DrawingAndStartingAnewAreForTheHolder) {
  const auto drawAndStart = [] {
    VYRADrawAircraft(1, 2, 3, 4, 5, 6, 7, 8, nullptr);
    VYRAReinitUsersPlane();
  };
  AcquireAs(one, a);
  RunAs(two, drawAndStart);
  EXPECT_EQ(gHost.calls, Lines());
  RunAs(one, drawAndStart);
  gHost.services.hostVersion = 567;
  RunAs(one, VYRAReinitUsersPlane);
  EXPECT_EQ(gHost.calls, (Lines{"DrawAircraft(1,2,3,4,5,6,7,8,0)", "ReinitUsersPlane(208,201)"}));
  ExpectForwards(VYRAPlaceUserAtAirport, &VYRAHostServices::PlaceUserAtAirport);
}

}  // namespace
