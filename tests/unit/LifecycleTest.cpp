// Enabling, disabling and unloading, seen from inside the library: what a plugin's own calls in the middle of
// it lead to, and what is left of a plugin that went.
#include "VYRALoaderLifecycle.h"

#include "PluginFixture.h"
#include "VYRACamera.h"
#include "VYRADataAccess.h"
#include "VYRADisplayInternal.h"
#include "VYRAHost.h"
#include "VYRAPlanes.h"
#include "VYRAProcessing.h"
#include "VYRAProcessingInternal.h"
#include "VYRAScenery.h"

namespace {

class Lifecycle : public PluginFixture {
 protected:
  // Registers one of everything as the dispatched plugin.
  static void RegisterThings() {
    static int value = 5;
    PublishInt("test/value", &value);
    VYRARegisterFlightLoopCallback(
        [](float, float, int, void*) {
          trace.emplace_back("loop");
          return -1.0F;
        },
        -1, nullptr);
    VYRAShareData(
        "test/shared", VYRA_TYPE_INT, [](void*) { trace.emplace_back("shared"); }, nullptr);
  }

  static void ExpectNothingIsCalled() {
    trace.clear();
    VYRAProcessingRunPass(1, 0);
    VYRASetDatai(VYRAFindDataRef("test/shared"), 3);
    VYRASendMessageToPlugin(-1, 1, nullptr);
    EXPECT_EQ(VYRAFindDataRef("test/value"), nullptr);
    EXPECT_EQ(trace, Lines());
  }
};

TEST_F(Lifecycle, HostAndUnknownPluginsAreNeitherEnabledNorDisabled) {
  for (const VYRAPluginID plugin : {0, -1, 1, 1 << 30}) {
    EXPECT_EQ(VYRAEnablePlugin(plugin), 0);
    VYRADisablePlugin(plugin);
  }
  EXPECT_EQ(VYRAIsPluginEnabled(0), 1);
}

TEST_F(Lifecycle, RefusalLeavesAPluginDisabledAndIsAskedAgain) {
  const VYRAPluginID plugin = AddPlugin("a");
  VYRARegistrySetEnabled(plugin, false);
  Record(plugin).enable = [] {
    trace.push_back("asked " + std::to_string(VYRAGetMyID()));
    return trace.size() < 2 ? 0 : 7;
  };
  EXPECT_EQ(VYRAEnablePlugin(plugin), 0);
  EXPECT_EQ(VYRAEnablePlugin(plugin), 1);
  EXPECT_EQ(VYRAEnablePlugin(plugin), 1);
  EXPECT_EQ(trace, (Lines{"asked 1", "asked 1"}));
}

TEST_F(Lifecycle, NothingThatAPluginTakesBackInItsLastCallsIsHeldAfterThem) {
  static VYRAWindowID window = nullptr;
  static VYRACameraControl_f control = nullptr;
  static const auto takeAll = [](const char* call) {
    trace.emplace_back(call);
    VYRATakeKeyboardFocus(window);
    VYRAMouseClickHook(5, 5, 1);
    VYRAControlCamera(2, control, nullptr);
    VYRAAcquirePlanes(nullptr, nullptr, nullptr);
    if (trace.size() > 1) throw 1;
  };
  control = [](VYRACameraPosition*, int, void*) { return takeAll("camera"), 1; };
  const VYRAPluginID plugin = AddPlugin("a");
  Record(plugin).disable = [] { takeAll("disable"); };
  RunAs(plugin, [] {
    window = VYRACreateWindow(
        0, 10, 10, 0, 1, nullptr, [](VYRAWindowID, char, int, char, void*, int) { takeAll("focus"); },
        [](VYRAWindowID, int, int, int status, void*) {
          if (status == VYRA_MOUSE_UP) takeAll("mouse");
          return 1;
        },
        nullptr);
    takeAll("start");
  });
  EXPECT_THROW(VYRADisablePlugin(plugin), int);
  EXPECT_EQ(trace, (Lines{"start", "focus", "mouse", "camera", "disable"}));
  EXPECT_EQ(gFocusWindow, nullptr);
  EXPECT_EQ(gDragWindow, nullptr);
  EXPECT_EQ(VYRAIsCameraBeingControlled(nullptr), 0);
  EXPECT_EQ(RunAs(AddPlugin("b"), [] { return VYRAAcquirePlanes(nullptr, nullptr, nullptr); }), 1);
}

TEST_F(Lifecycle, PluginsThatEnableEachOtherWhileEnablingComeToAnEnd) {
  for (const char* signature : {"a", "b"}) {
    const VYRAPluginID plugin = AddPlugin(signature);
    VYRARegistrySetEnabled(plugin, false);
    Record(plugin).enable = [] {
      const VYRAPluginID other = 3 - VYRAGetMyID();
      trace.push_back(std::to_string(VYRAGetMyID()) + " enables");
      EXPECT_EQ(VYRAEnablePlugin(VYRAGetMyID()), 0);
      VYRAEnablePlugin(other);
      return 1;
    };
  }
  EXPECT_EQ(VYRAEnablePlugin(1), 1);
  EXPECT_EQ(VYRAIsPluginEnabled(2), 1);
  EXPECT_EQ(trace, (Lines{"1 enables", "2 enables"}));
}

TEST_F(Lifecycle, RegistryMayGrowWhileAPluginIsEnabledOrDisabled) {
  const VYRAPluginID plugin = AddPlugin("a");
  VYRARegistrySetEnabled(plugin, false);
  Record(plugin).enable = [] {
    for (int i = 0; i < 40; ++i) AddPlugin("more");
    return 1;
  };
  Record(plugin).disable = [] {
    trace.push_back(VYRAIsPluginEnabled(VYRAGetMyID()) ? "still enabled" : "disabled");
    for (int i = 0; i < 100; ++i) AddPlugin("more");
  };
  EXPECT_EQ(VYRAEnablePlugin(plugin), 1);
  VYRADisablePlugin(plugin);
  VYRADisablePlugin(plugin);
  EXPECT_EQ(trace, Lines{"disabled"});
  EXPECT_EQ(VYRACountPlugins(), 142);
}

TEST_F(Lifecycle, UnloadedPluginIsNeverCalledFoundOrEnabledAgain) {
  const VYRAPluginID plugin = AddPlugin("a");
  AddPlugin("b");
  RunAs(plugin, RegisterThings);
  Record(plugin).stop = [] { trace.emplace_back("stop"); };
  Record(plugin).enable = [] { return 1; };
  Record(plugin).receiveMessage = [](VYRAPluginID, int, void*) { trace.emplace_back("message"); };
  UnloadOnePlugin(plugin);
  UnloadOnePlugin(plugin);
  EXPECT_EQ(trace, Lines{"stop"});
  ExpectNothingIsCalled();
  EXPECT_EQ(VYRAEnablePlugin(plugin), 0);
  EXPECT_EQ(VYRAFindPluginBySignature("a"), -1);
  EXPECT_EQ(Record(plugin).moduleHandle, nullptr);
  EXPECT_EQ(Record(plugin).name, "The a");
  RunAs(plugin, [] { VYRASetErrorCallback([](const char*) {}); });
  EXPECT_EQ(Record(plugin).error, nullptr) << "no pointer into a closed module may come back";
}

TEST_F(Lifecycle, StopThatEnablesItselfAndRegistersThingsLeavesNothingBehind) {
  const VYRAPluginID plugin = AddPlugin("a");
  VYRARegistrySetEnabled(plugin, false);
  Record(plugin).stop = [] {
    trace.emplace_back("stop");
    EXPECT_EQ(VYRAEnablePlugin(VYRAGetMyID()), 0);
    RegisterThings();
    VYRAReloadPlugins();
    UnloadOnePlugin(VYRAGetMyID());
    RegisterThings();
  };
  UnloadOnePlugin(plugin);
  EXPECT_EQ(trace, Lines{"stop"});
  EXPECT_EQ(VYRAIsPluginEnabled(plugin), 0);
  ExpectNothingIsCalled();
}

TEST_F(Lifecycle, CleanUpThatThrowsGoesOnWhenTheUnloadIsCalledAgain) {
  const VYRAPluginID plugin = AddPlugin("a");
  Record(plugin).stop = [] { trace.emplace_back("stop"); };
  RunAs(plugin, [] {
    RegisterThings();
    for (int i = 0; i < 3; ++i) VYRALoadObject("object");
  });
  gHost.services.UnloadObject = [](VYRAObjectRef) { throw 1; };
  gHost.Answer("LoadObject", 7);
  for (int calls = 0; VYRARegistryIsOpen(plugin) && calls < 10; ++calls) {
    try {
      UnloadOnePlugin(plugin);
    } catch (int) {
    }
  }
  EXPECT_EQ(trace, Lines{"stop"});
  ExpectNothingIsCalled();
  EXPECT_FALSE(VYRARegistryIsOpen(plugin));
}

TEST_F(Lifecycle, UnloadingAllForgetsWhichPluginsWereTheAircrafts) {
  gCurrentAircraftPluginIDS = {AddPlugin("a"), AddPlugin("b")};
  VYRAUnloadPlugins();
  EXPECT_EQ(VYRACountPlugins(), 0);
  EXPECT_TRUE(gCurrentAircraftPluginIDS.empty());
}

}  // namespace
