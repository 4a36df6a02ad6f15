// Who runs now, and the watcher that is told of every call into a plugin.
#include <csignal>
#include <stdexcept>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "PluginFixture.h"
#include "VYRACamera.h"
#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAHost.h"
#include "VYRALoaderDeliveries.h"
#include "VYRALoaderIdentities.h"
#include "VYRALoaderLifecycle.h"
#include "VYRAMenus.h"
#include "VYRAPlanes.h"
#include "VYRAProcessing.h"
#include "VYRAScenery.h"
#include "VYRAUtilities.h"
#include "VYRAWatch.h"

namespace {

using Call = std::tuple<VYRAPluginID, int, std::string>;  // the plugin, the kind, its signature

std::vector<Call> RunningCalls() {
  VYRARunningCall calls[VYRA_MOST_RUNNING_CALLS];
  const int count = VYRAGetRunningCalls(calls, VYRA_MOST_RUNNING_CALLS);
  std::vector<Call> running;
  running.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) running.emplace_back(calls[i].plugin, calls[i].kind, calls[i].signature);
  return running;
}

std::vector<Call> gSeen;  // what a callback, handler or thread of a test saw

class WatchTest : public PluginFixture {
 protected:
  WatchTest() {
    for (const char* signature : {"first", "second"}) {
      const VYRAPluginID plugin = AddPlugin(signature);
      VYRAIdentitySet(plugin, "", signature, "");
    }
    gSeen.clear();
  }
  ~WatchTest() override { VYRASetWatcher(nullptr); }

  static void Watch(int wantsAccessors = 0) {
    const auto note = [](const char* what, const VYRARunningCall* call) {
      trace.push_back(what + std::to_string(call->plugin) + " " + VYRAGetCallKindName(call->kind));
    };
    static const auto gNote = note;
    const VYRAWatcher watcher = {sizeof(watcher), wantsAccessors,
                                 [](const VYRARunningCall* call, void*) { gNote("+", call); },
                                 [](const VYRARunningCall* call, void*) { gNote("-", call); }, nullptr};
    ASSERT_EQ(VYRASetWatcher(&watcher), 1);
  }

  static void SetMessage(VYRAPluginID plugin, void (*receive)(VYRAPluginID, int, void*)) {
    Record(plugin).receiveMessage = receive;
  }

  // What is told of each call that `act` leads to, which must be one into plugin 1 that ends.
  static std::string KindToldOf(const std::function<void()>& act) {
    trace.clear();
    act();
    if (trace.size() != 2 || trace[0].substr(1) != trace[1].substr(1)) return "not one call";
    return trace[0].substr(0, 3) == "+1 " ? trace[0].substr(3) : trace[0];
  }
};

TEST_F(WatchTest, RunningCallsNameTheInnermostFirst) {
  const auto read = [](void*) {
    gSeen = RunningCalls();
    return 1;
  };
  const auto publish = [&] {
    VYRARegisterDataAccessor("test/value", VYRA_TYPE_INT, 0, read, nullptr, nullptr, nullptr, nullptr,
                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  };
  RunAs(2, publish);
  SetMessage(1, [](VYRAPluginID, int, void*) { VYRAGetDatai(VYRAFindDataRef("test/value")); });
  EXPECT_TRUE(RunningCalls().empty());
  VYRASendMessageToPlugin(1, 1, nullptr);
  EXPECT_EQ(gSeen, (std::vector<Call>{{2, VYRA_CALL_DATAREF, "second"}, {1, VYRA_CALL_MESSAGE, "first"}}));
  EXPECT_TRUE(RunningCalls().empty());
}

TEST_F(WatchTest, DeepestCallsAreKeptWhenThereAreTooMany) {
  SetMessage(1, [](VYRAPluginID, int message, void*) {
    if (message == 0) {
      gSeen = RunningCalls();
    } else {
      VYRASendMessageToPlugin(message == 1 ? 2 : 1, message - 1, nullptr);
      if (message == 100) gSeen.emplace_back(0, static_cast<int>(RunningCalls().size()), "");
    }
  });
  SetMessage(2, Record(1).receiveMessage);
  VYRASendMessageToPlugin(1, 100, nullptr);
  ASSERT_EQ(gSeen.size(), VYRA_MOST_RUNNING_CALLS + 1U);
  EXPECT_EQ(gSeen[0], Call(2, VYRA_CALL_MESSAGE, "second"));
  EXPECT_EQ(gSeen[1], Call(1, VYRA_CALL_MESSAGE, "first"));
  // On the way back the running call is known again, whatever deeper ones wrote over.
  EXPECT_EQ(gSeen.back(), Call(0, 1, ""));
}

TEST_F(WatchTest, NobodyRunsBetweenTheCallsOfAWalkAndInRefusedOnes) {
  VYRARegistrySetEnabled(2, false);
  StDispatchWalk walk(VYRA_CALL_FLIGHT_LOOP);
  EXPECT_TRUE(walk(1));
  EXPECT_EQ(RunningCalls().size(), 1U);
  walk.Ended();
  EXPECT_TRUE(RunningCalls().empty());
  EXPECT_FALSE(walk(2));
  EXPECT_TRUE(RunningCalls().empty());
  const StDispatchCallback refused(2, VYRA_CALL_MESSAGE);
  EXPECT_FALSE(refused());
  EXPECT_TRUE(RunningCalls().empty());
}

TEST_F(WatchTest, SignalHandlersAndThreadsMayAsk) {
  SetMessage(1, [](VYRAPluginID, int, void* whom) {
    if (whom == nullptr) {
      std::raise(SIGUSR1);
    } else {
      std::thread([] { gSeen = RunningCalls(); }).join();
    }
  });
  const std::vector<Call> expected = {{1, VYRA_CALL_MESSAGE, "first"}};
  std::signal(SIGUSR1, [](int) { gSeen = RunningCalls(); });
  VYRASendMessageToPlugin(1, 1, nullptr);
  std::signal(SIGUSR1, SIG_DFL);
  EXPECT_EQ(gSeen, expected);
  gSeen.clear();
  VYRASendMessageToPlugin(1, 1, &gSeen);
  EXPECT_EQ(gSeen, expected);
}

TEST_F(WatchTest, WatcherIsToldOfEachKindOfCall) {
  Watch(1);
  void* const refcon = nullptr;
  VYRAWindowID window = nullptr;
  VYRACommandRef const command = &window;
  Record(1).enable = [] { return 1; };
  Record(1).disable = [] {};
  SetMessage(1, [](VYRAPluginID, int, void*) {});
  RunAs(2, [] { VYRAAcquirePlanes(nullptr, nullptr, nullptr); });
  RunAs(1, [&] {
    const VYRAWindowCreateParams params = {sizeof(params),
                                           0,
                                           10,
                                           10,
                                           0,
                                           1,
                                           [](VYRAWindowID, void*) {},
                                           [](VYRAWindowID, int, int, int, void*) { return 1; },
                                           [](VYRAWindowID, char, int, char, void*, int) {},
                                           [](VYRAWindowID, int, int, void*) { return 1; },
                                           [](VYRAWindowID, int, int, int, int, void*) { return 1; },
                                           nullptr};
    window = VYRACreateWindowEx(&params);
    VYRATakeKeyboardFocus(window);
    VYRARegisterFlightLoopCallback([](float, float, int, void*) { return -1.0F; }, -1, refcon);
    VYRARegisterDrawCallback([](int, int, void*) { return 1; }, 5, 1, refcon);
    VYRARegisterHotKey(
        'H', 1, "", [](void*) {}, refcon);
    VYRAControlCamera(
        VYRA_CAMERA_UNTIL_VIEW_CHANGES, [](VYRACameraPosition*, int, void*) { return 1; }, refcon);
    VYRARegisterCommandHandler(
        command, [](VYRACommandRef, int, void*) { return 1; }, 1, refcon);
    VYRAAcquirePlanes(
        nullptr, [](void*) {}, refcon);
    VYRAShareData(
        "test/shared", VYRA_TYPE_INT, [](void*) {}, refcon);
    VYRARegisterDataAccessor(
        "test/own", VYRA_TYPE_INT, 0, [](void*) { return 1; }, nullptr, nullptr, nullptr, nullptr, nullptr,
        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    const VYRAMenuID menu = VYRACreateMenu(
        "Test", nullptr, 0, [](void*, void*) {}, refcon);
    gHost.Answer("AppendMenuItem", 77);
    VYRAAppendMenuItem(menu, "Item", nullptr, 0);
  });
  float place[7] = {};
  EXPECT_EQ(KindToldOf([] { VYRASendMessageToPlugin(1, 1, nullptr); }), "message");
  EXPECT_EQ(KindToldOf([] { VYRAEventHook(0, nullptr, nullptr, 1, 0); }), "flight loop");
  EXPECT_EQ(KindToldOf([] { VYRADoDrawingHook(2, 0); }), "draw callback");
  EXPECT_EQ(KindToldOf([] { VYRADoDrawingHook(20, 0); }), "window draw");
  EXPECT_EQ(KindToldOf([] { VYRAMouseClickHook(5, 5, 1); }), "window mouse");
  EXPECT_EQ(KindToldOf([] { VYRAMouseClickHook(5, 5, 0); }), "window mouse");
  EXPECT_EQ(KindToldOf([] { VYRAKeyPressHook('k', 0, 'K'); }), "window key");
  EXPECT_EQ(KindToldOf([] { VYRATakeKeyboardFocus(nullptr); }), "window key");
  EXPECT_EQ(KindToldOf([] { VYRACursorHook(5, 5); }), "window cursor");
  EXPECT_EQ(KindToldOf([] { VYRAScrollWheelHook(5, 5, 0, 1); }), "window wheel");
  EXPECT_EQ(KindToldOf([] { VYRAKeyPressHook('h', 1, 'H'); }), "hot key");
  EXPECT_EQ(KindToldOf([&] {
              VYRACameraHook(place, place + 1, place + 2, place + 3, place + 4, place + 5, place + 6);
            }),
            "camera");
  EXPECT_EQ(KindToldOf([&] { VYRACommandHook(command, 1, 0, 1); }), "command");
  EXPECT_EQ(KindToldOf([] { VYRAGetDatai(VYRAFindDataRef("test/own")); }), "dataref");
  EXPECT_EQ(KindToldOf([] { VYRASetDatai(VYRAFindDataRef("test/shared"), 2); }), "shared data");
  EXPECT_EQ(KindToldOf([] { VYRAMenuHook(77); }), "menu");

  // What happens inside a plugin's call stands between that call's begin and end.
  trace.clear();
  RunAs(2, VYRAReleasePlanes);
  RunAs(1, [] {
    VYRAEnumerateFeatures([](const char* name, void*) { trace.emplace_back(name); }, nullptr);
    VYRAEnableFeature("none", 1);
    VYRALookupObjects("", 0, 0, nullptr, nullptr);
  });
  VYRADisablePlugin(1);
  VYRAEnablePlugin(1);
  EXPECT_EQ(trace, Lines({"+2 message",
                          "+1 planes",
                          "-1 planes",
                          "-2 message",
                          "+1 message",
                          "+1 enumerator",
                          "VYRA_WANTS_REFLECTIONS",
                          "-1 enumerator",
                          "+1 enumerator",
                          "VYRA_USE_NATIVE_PATHS",
                          "-1 enumerator",
                          "+1 error",
                          "-1 error",
                          "+1 enumerator",
                          "-1 enumerator",
                          "-1 message",
                          "+1 camera",
                          "-1 camera",
                          "+1 disable",
                          "-1 disable",
                          "+1 enable",
                          "-1 enable"}));
}

TEST_F(WatchTest, AccessorsAreToldOnDemandAndTheHostNever) {
  static int value = 0;
  PublishInt("test/host", &value);
  RunAs(1, [] { PublishInt("test/plugin", &value); });
  Watch(0);
  VYRASetDatai(VYRAFindDataRef("test/plugin"), 1);
  EXPECT_EQ(trace, Lines());
  Watch(1);
  VYRASetDatai(VYRAFindDataRef("test/plugin"), 2);
  VYRASetDatai(VYRAFindDataRef("test/host"), 3);
  VYRASendMessageToPlugin(VYRA_HOST_PLUGIN, 1, nullptr);
  EXPECT_EQ(trace, Lines({"+1 dataref", "-1 dataref"}));
  EXPECT_EQ(value, 3);

  // Plugins that come while accessors are watched are neither told of nor called before they are enabled.
  for (int more = 0; more < 600; ++more) AddPlugin("more");
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef("test/plugin")), 3);
  VYRADisablePlugin(1);
  trace.clear();
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef("test/plugin")), 0);
  EXPECT_EQ(trace, Lines());
  VYRASetWatcher(nullptr);
  VYRAEnablePlugin(1);
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef("test/plugin")), 3);
}

TEST_F(WatchTest, BeginsAndEndsStayPaired) {
  SetMessage(1, [](VYRAPluginID, int, void*) { throw std::runtime_error("test"); });
  SetMessage(2, [](VYRAPluginID, int message, void*) {
    if (message == 1) VYRASendMessageToPlugin(1, 1, nullptr);
    if (message == 2) UnloadOnePlugin(2);
  });
  RunAs(1, [] {
    VYRARegisterFlightLoopCallback([](float, float, int, void*) -> float { throw 1; }, -1, nullptr);
  });
  Watch();
  EXPECT_THROW(VYRASendMessageToPlugin(2, 1, nullptr), std::runtime_error);
  EXPECT_THROW(VYRAEventHook(0, nullptr, nullptr, 1, 0), int);
  VYRASendMessageToPlugin(2, 2, nullptr);
  EXPECT_EQ(trace, Lines({"+2 message", "+1 message", "-1 message", "-2 message", "+1 flight loop",
                          "-1 flight loop", "+2 message", "+2 closing", "-2 closing", "-2 message"}));
  EXPECT_TRUE(RunningCalls().empty());
}

TEST_F(WatchTest, WatcherThatIsChangedInsideACallHearsOfNoHalfCalls) {
  SetMessage(1, [](VYRAPluginID, int message, void*) {
    if (message == 1) Watch();
    if (message == 2) VYRASetWatcher(nullptr);
    if (message == 3) {
      VYRASetWatcher(nullptr);
      Watch();
    }
  });
  VYRASendMessageToPlugin(1, 1, nullptr);
  EXPECT_EQ(trace, Lines());
  VYRASendMessageToPlugin(1, 3, nullptr);
  VYRASendMessageToPlugin(1, 2, nullptr);
  EXPECT_EQ(trace, Lines({"+1 message", "+1 message"}));
}

TEST_F(WatchTest, RefusesWatchersThatAreNotWhole) {
  const auto ignore = [](const VYRARunningCall*, void*) {};
  const VYRAWatcher small = {sizeof(small) - 4, 0, ignore, ignore, nullptr};
  const VYRAWatcher half = {sizeof(half), 0, ignore, nullptr, nullptr};
  Watch();
  EXPECT_EQ(std::make_tuple(VYRASetWatcher(&small), VYRASetWatcher(&half)), std::make_tuple(0, 0));
  SetMessage(1, [](VYRAPluginID, int, void*) {});
  VYRASendMessageToPlugin(1, 1, nullptr);
  EXPECT_EQ(trace, Lines({"+1 message", "-1 message"}));
}

}  // namespace
