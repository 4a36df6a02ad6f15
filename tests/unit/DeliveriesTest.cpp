// Deliveries: who gets one, when, in which order, and who hears that its plugin is gone.
#include "VYRALoaderDeliveries.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "PluginFixture.h"
#include "VYRALoaderLifecycle.h"

namespace {

class Deliveries : public PluginFixture {
 protected:
  class Delivery final : public VYRADelivery {
   public:
    Delivery(VYRAPluginID plugin, char deliveryName) : VYRADelivery(plugin), name(deliveryName) {}
    void DeliverToPlugin(bool pluginGone) override {
      trace.push_back(name + (pluginGone ? std::string(" gone") : " to " + std::to_string(VYRAGetMyID())));
      const std::unique_ptr<Delivery> self(this);
      if (name == '!') VYRADisablePlugin(VYRAGetMyID());
      if (name == '?') throw std::runtime_error("a failure of the callback's own");
    }

   private:
    char name;
  };

  static Delivery* Queue(VYRAPluginID plugin, char name) {
    auto* delivery = new Delivery(plugin, name);
    VYRAQueueDelivery(delivery);
    return delivery;
  }
};

TEST_F(Deliveries, EnabledPluginGetsItsResultAtOnce) {
  VYRADelivery* delivery = Queue(AddPlugin("a"), 'x');
  VYRASendDelivery(delivery);
  EXPECT_EQ(trace, Lines{"x to 1"});
  EXPECT_EQ(VYRAGetMyID(), 0);
}

TEST_F(Deliveries, ResultsFinishedWhileDisabledComeLastFinishedFirstOnceEnabled) {
  const VYRAPluginID plugin = AddPlugin("a");
  std::vector<Delivery*> queued;
  for (const char name : {'x', 'y', 'z'}) queued.push_back(Queue(plugin, name));
  VYRADisablePlugin(plugin);
  for (Delivery* delivery : queued) VYRASendDelivery(delivery);
  EXPECT_TRUE(trace.empty());
  EXPECT_EQ(VYRAEnablePlugin(plugin), 1);
  EXPECT_EQ(trace, (Lines{"z to 1", "y to 1", "x to 1"}));
}

TEST_F(Deliveries, PluginThatDisablesItselfInADeliveryGetsTheRestLater) {
  const VYRAPluginID plugin = AddPlugin("a");
  std::vector<Delivery*> queued;
  for (const char name : {'x', '!'}) queued.push_back(Queue(plugin, name));
  VYRADisablePlugin(plugin);
  for (Delivery* delivery : queued) VYRASendDelivery(delivery);
  EXPECT_EQ(VYRAEnablePlugin(plugin), 0);
  EXPECT_EQ(trace, Lines{"! to 1"});
  VYRAEnablePlugin(plugin);
  EXPECT_EQ(trace, (Lines{"! to 1", "x to 1"}));
}

TEST_F(Deliveries, OneThatThrowsKeepsNoOtherWaiting) {
  const VYRAPluginID plugin = AddPlugin("a");
  std::vector<Delivery*> queued;
  for (const char name : {'x', '?', 'y'}) queued.push_back(Queue(plugin, name));
  VYRADisablePlugin(plugin);
  for (Delivery* delivery : queued) VYRASendDelivery(delivery);
  EXPECT_THROW(VYRAEnablePlugin(plugin), std::runtime_error);
  EXPECT_EQ(trace, (Lines{"y to 1", "? to 1", "x to 1"}));
  EXPECT_EQ(VYRAIsPluginEnabled(plugin), 1);
}

TEST_F(Deliveries, PluginThatLeavesDropsWhatWaitsAtOnceAndWhatIsPendingWhenItFinishes) {
  const VYRAPluginID plugin = AddPlugin("a");
  Delivery* pending = Queue(plugin, 'p');
  Delivery* other = Queue(plugin, 'q');
  Delivery* waiting = Queue(plugin, 'w');
  VYRADisablePlugin(plugin);
  VYRASendDelivery(waiting);
  UnloadOnePlugin(plugin);
  EXPECT_EQ(trace, Lines{"w gone"});
  VYRASendDelivery(pending);
  VYRASendDelivery(other);
  EXPECT_EQ(trace, (Lines{"w gone", "p gone", "q gone"}));
}

TEST_F(Deliveries, WorkBegunByAPluginThatLeavesIsNotDeliveredToTheNextOwnerOfItsId) {
  const VYRAPluginID plugin = AddPlugin("a");
  static std::vector<Delivery*> late;
  late.clear();
  Record(plugin).stop = [] {
    late.push_back(Queue(VYRAGetMyID(), 'x'));
    VYRAUnloadPlugins();
    late.push_back(Queue(VYRAGetMyID(), 'y'));
  };
  UnloadOnePlugin(plugin);
  AddPlugin("the host's place");
  ASSERT_EQ(AddPlugin("next"), plugin);
  for (Delivery* delivery : late) VYRASendDelivery(delivery);
  EXPECT_EQ(trace, (Lines{"x gone", "y gone"}));
}

TEST_F(Deliveries, ListsSurviveTheGrowthOfTheRegistry) {
  constexpr int kPlugins = 70;
  std::vector<Delivery*> queued;
  for (int i = 0; i < kPlugins; ++i) {
    const VYRAPluginID plugin = AddPlugin("a");
    queued.push_back(Queue(plugin, 'x'));
    queued.push_back(Queue(plugin, 'y'));
    VYRARegistrySetEnabled(plugin, i % 2 == 0);
  }
  for (Delivery* delivery : queued) VYRASendDelivery(delivery);
  EXPECT_EQ(trace.size(), std::size_t{kPlugins});
  for (int i = 0; i < kPlugins; ++i) AddPlugin("b");
  VYRAEnableAllPlugins();
  EXPECT_EQ(trace.size(), 2 * std::size_t{kPlugins});
  EXPECT_EQ(trace.back(), "x to " + std::to_string(kPlugins));
}

TEST_F(Deliveries, DeliveryForNobodyIsReportedAndTellsThatNobodyIsThere) {
  Delivery* lost = RunAs(AddPlugin("a"), [] { return Queue(50, 'l'); });
  EXPECT_EQ(errors, Lines{"1: Internal error: async queue pending but the plugin ID is invalid."});
  VYRASendDelivery(lost);
  EXPECT_EQ(trace, Lines{"l gone"});
}

}  // namespace
