// Messages between plugins and the features that they switch on for themselves.
#include <cstdint>
#include <string>

#include "PluginFixture.h"
#include "VYRALoaderFeatures.h"

namespace {

class Messages : public PluginFixture {
 protected:
  static VYRAPluginID AddReceiver(const char* signature) {
    const VYRAPluginID plugin = AddPlugin(signature);
    Record(plugin).receiveMessage = [](VYRAPluginID from, int message, void* param) {
      trace.push_back(std::to_string(VYRAGetMyID()) + " got " + std::to_string(message) + " from " +
                      std::to_string(from));
      if (param != nullptr) static_cast<void (*)()>(reinterpret_cast<void (*)()>(param))();
    };
    return plugin;
  }
  static void* Code(void (*code)()) { return reinterpret_cast<void*>(code); }
};

TEST_F(Messages, BroadcastReachesTheHostFirstThenEveryEnabledPluginAndTheSender) {
  const VYRAPluginID sender = AddReceiver("a");
  VYRARegistrySetEnabled(AddReceiver("b"), false);
  AddReceiver("c");
  RunAs(sender, [] { VYRASendMessageToPlugin(-1, 500, nullptr); });
  EXPECT_EQ(gHost.CallsOf("HostReceiveMessage"), Lines{"HostReceiveMessage(1,500)"});
  EXPECT_EQ(trace, (Lines{"1 got 500 from 1", "3 got 500 from 1"}));
}

TEST_F(Messages, ReceiversThatDoNotExistOrDoNotListenArePassedOver) {
  const VYRAPluginID deaf = AddPlugin("a");
  for (const VYRAPluginID plugin : {deaf, 2, -2, 1 << 30}) VYRASendMessageToPlugin(plugin, 1, nullptr);
  EXPECT_TRUE(trace.empty());
}

TEST_F(Messages, ReceiverMayGrowTheRegistryAndNewcomersMissTheRunningBroadcast) {
  AddReceiver("a");
  VYRASendMessageToPlugin(-1, 1, Code([] {
    if (VYRACountPlugins() < 40) {
      for (int i = 0; i < 40; ++i) AddReceiver("more");
    }
  }));
  EXPECT_EQ(trace, Lines{"1 got 1 from 0"});
}

TEST_F(Messages, MessagesNestTenDeepAndEachCallEndsAsItsOwnPlugin) {
  for (const char* signature : {"a", "b"}) {
    Record(AddPlugin(signature)).receiveMessage = [](VYRAPluginID from, int message, void*) {
      const VYRAPluginID self = VYRAGetMyID();
      EXPECT_EQ(from, message == 1 ? 0 : 3 - self);
      if (message < 10) VYRASendMessageToPlugin(3 - self, message + 1, nullptr);
      EXPECT_EQ(VYRAGetMyID(), self);
      trace.push_back(std::to_string(message));
    };
  }
  VYRASendMessageToPlugin(1, 1, nullptr);
  EXPECT_EQ(trace, (Lines{"10", "9", "8", "7", "6", "5", "4", "3", "2", "1"}));
}

TEST_F(Messages, FeaturesAreFlagsOfTheCallingPlugin) {
  const VYRAPluginID one = AddPlugin("a");
  const VYRAPluginID other = AddPlugin("b");
  RunAs(one, [] { VYRAEnableFeature("VYRA_USE_NATIVE_PATHS", 2); });
  EXPECT_EQ(RunAs(one, [] { return VYRAIsFeatureEnabled("VYRA_USE_NATIVE_PATHS"); }), 2);
  EXPECT_EQ(RunAs(other, [] { return VYRAIsFeatureEnabled("VYRA_USE_NATIVE_PATHS"); }), 0);
  EXPECT_EQ(VYRAHasFeatureInternal(one, kFeatureNativePaths), 2);
  EXPECT_EQ(VYRAHasFeatureInternal(one, kFeatureWantsReflections), 0);
  EXPECT_FALSE(RunAs(one, [] { return VYRANeedPathConvert(); }));
  for (const VYRAPluginID id : {0, -1, other, 9})
    EXPECT_TRUE(RunAs(id, [] { return VYRANeedPathConvert(); }));
  RunAs(9, [] { VYRAEnableFeature("VYRA_WANTS_REFLECTIONS", 1); });
  EXPECT_EQ(RunAs(9, [] { return VYRAIsFeatureEnabled("VYRA_WANTS_REFLECTIONS"); }), 0);
}

TEST_F(Messages, UnknownFeaturesAreReportedInOneTextAndKnownOnesEnumeratedInOrder) {
  RunAs(AddPlugin("a"), [] {
    EXPECT_EQ(VYRAIsFeatureEnabled("vyra_use_native_paths"), 0);
    VYRAEnableFeature(nullptr, 1);
    EXPECT_EQ(VYRAHasFeature("VYRA_USE_NATIVE_PATHS"), 1);
    EXPECT_EQ(VYRAHasFeature("VYRA_USE_NATIVE"), 0);
    VYRAEnumerateFeatures([](const char* name, void*) { trace.emplace_back(name); }, nullptr);
  });
  EXPECT_EQ(errors, Lines(2, "1: Illegal feature name passed to VYRAEnableFeature"));
  EXPECT_EQ(trace, (Lines{"VYRA_WANTS_REFLECTIONS", "VYRA_USE_NATIVE_PATHS"}));
}

}  // namespace
