// Shared data: values that the library keeps, and who is told of a write.
#include <climits>

#include "PluginFixture.h"
#include "VYRADataAccess.h"

namespace {

class SharedData : public PluginFixture {
 protected:
  // Notes the refcon's text and the plugin that is told.
  static void Note(void* refcon) {
    trace.push_back(static_cast<const char*>(refcon) + std::to_string(VYRAGetMyID()));
  }
  static int Share(const char* note, int type = VYRA_TYPE_INT) {
    return VYRAShareData(kName, type, Note, const_cast<char*>(note));
  }
  static int Unshare(const char* note, int type = VYRA_TYPE_INT, const char* name = kName) {
    return VYRAUnshareData(name, type, Note, const_cast<char*>(note));
  }
  // An item that nobody subscribes to.
  static VYRADataRef Item(const char* name, int type) {
    EXPECT_EQ(VYRAShareData(name, type, nullptr, nullptr), 1);
    return VYRAFindDataRef(name);
  }
  // Who is told of a write.
  static Lines Write() {
    trace.clear();
    VYRASetDatai(VYRAFindDataRef(kName), 6);
    return trace;
  }
  static constexpr const char* kName = "test/shared";
};

TEST_F(SharedData, ItemIsADatarefOfTheHostWithOneTypeForGood) {
  const VYRADataRef item = RunAs(AddPlugin("a"), [] { return Item(kName, VYRA_TYPE_INT); });
  EXPECT_EQ(VYRAShareData(kName, VYRA_TYPE_FLOAT, nullptr, nullptr), 0);
  EXPECT_EQ(VYRAShareData(nullptr, VYRA_TYPE_INT, nullptr, nullptr), 0);
  EXPECT_EQ(VYRACanWriteDataRef(item), 1);
  VYRASetDatai(item, 42);
  VYRASetDataf(item, 1.5F);
  EXPECT_EQ(VYRAGetDatai(item), 42);
  EXPECT_EQ(VYRAGetDataf(item), 0.0F);

  const VYRADataRef singlePrecision = Item("test/float", VYRA_TYPE_FLOAT);
  const VYRADataRef doublePrecision = Item("test/double", VYRA_TYPE_DOUBLE);
  VYRASetDataf(singlePrecision, 2.5F);
  VYRASetDatad(doublePrecision, 3.25);
  EXPECT_EQ(VYRAGetDataf(singlePrecision), 2.5F);
  EXPECT_EQ(VYRAGetDatad(doublePrecision), 3.25);
  EXPECT_EQ(VYRAGetDatai(Item("test/odd", 3)), 0) << "no value is of two types";
}

TEST_F(SharedData, ArraysGrowWithWritesAndNeverShrink) {
  const VYRADataRef item = Item(kName, VYRA_TYPE_INT_ARRAY);
  EXPECT_EQ(VYRAGetDatavi(item, nullptr, 0, 0), 1);
  int values[] = {1, 2, 3, 4, 5};
  VYRASetDatavi(item, values, 0, 5);
  values[0] = 9;
  VYRASetDatavi(item, values, 0, 1);
  EXPECT_EQ(VYRAGetDatavi(item, nullptr, 0, 0), 5);
  int read[2] = {};
  EXPECT_EQ(VYRAGetDatavi(item, read, 3, 10), 2);
  EXPECT_EQ(read[1], 5);
  EXPECT_EQ(VYRAGetDatavi(item, read, 0, 1), 1);
  EXPECT_EQ(read[0], 9);

  const VYRADataRef bytes = Item("test/bytes", VYRA_TYPE_DATA);
  EXPECT_EQ(VYRAGetDatab(bytes, nullptr, 0, 0), 1);
  VYRASetDatab(bytes, values, 7, 4);
  EXPECT_EQ(VYRAGetDatab(bytes, nullptr, 0, 0), 11);
}

TEST_F(SharedData, RangesOutsideTheItemCopyNothingAndChangeNothing) {
  Share("told", VYRA_TYPE_FLOAT_ARRAY);
  const VYRADataRef item = VYRAFindDataRef(kName);
  float value = 1;
  VYRASetDatavf(item, &value, -1, 1);
  VYRASetDatavf(item, &value, 0, -1);
  VYRASetDatavf(item, nullptr, 0, 1);
  VYRASetDatavf(item, &value, INT_MAX, 1);
  EXPECT_EQ(trace, Lines());
  EXPECT_EQ(VYRAGetDatavf(item, nullptr, 0, 0), 1);
  for (const int outside : {-1, 1}) EXPECT_EQ(VYRAGetDatavf(item, &value, outside, 1), 0);
  EXPECT_EQ(VYRAGetDatavf(item, &value, 0, -1), 0);
}

TEST_F(SharedData, EveryWriteTellsEverySubscriberInTurnAsItself) {
  for (const char* plugin : {"a", "b"}) AddPlugin(plugin);
  for (const VYRAPluginID plugin : {2, 1, 2}) RunAs(plugin, [&] { Share(plugin == 1 ? "y" : "x"); });
  EXPECT_EQ(RunAs(1, Write), (Lines{"x2", "y1", "x2"}));
  VYRARegistrySetEnabled(2, false);
  EXPECT_EQ(Write(), Lines{"y1"});
}

TEST_F(SharedData, SubscriptionEndsOnlyForItsOwnPluginCallbackAndRefcon) {
  const VYRAPluginID plugin = AddPlugin("a");
  RunAs(plugin, [] {
    Share("x");
    EXPECT_EQ(Unshare("y"), 0);
    EXPECT_EQ(Unshare("x", VYRA_TYPE_FLOAT), 0);
    EXPECT_EQ(Unshare("x", VYRA_TYPE_INT, "test/none"), 0);
    EXPECT_EQ(VYRAUnshareData(kName, VYRA_TYPE_INT, nullptr, nullptr), 0);
  });
  EXPECT_EQ(Unshare("x"), 0) << "the host did not subscribe";
  EXPECT_EQ(Write(), Lines{"x1"});
  EXPECT_EQ(RunAs(plugin, [] { return Unshare("x"); }), 1);
  EXPECT_EQ(Write(), Lines());
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef(kName)), 6);
}

TEST_F(SharedData, SubscribersMayLeaveAndJoinWhileTheyAreTold) {
  const auto leaveAndJoin = [](void*) {
    trace.emplace_back("leaves");
    EXPECT_EQ(Unshare("late"), 1);
    EXPECT_EQ(Unshare("late"), 0);
    Share("joined");
  };
  VYRAShareData(kName, VYRA_TYPE_INT, leaveAndJoin, nullptr);
  for (const char* note : {"late", "stays"}) Share(note);
  EXPECT_EQ(Write(), (Lines{"leaves", "stays0"}));
  VYRAUnshareData(kName, VYRA_TYPE_INT, leaveAndJoin, nullptr);
  EXPECT_EQ(Write(), (Lines{"stays0", "joined0"}));
}

TEST_F(SharedData, NameOfALiveOwnerStaysItsOwnAndTheItemHasNoDataref) {
  static int value = 5;
  RunAs(AddPlugin("a"), [] { PublishInt(kName, &value); });
  EXPECT_EQ(Share("x"), 1);
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef(kName)), 5);
  EXPECT_EQ(Write(), Lines());
  EXPECT_EQ(value, 6);
}

}  // namespace
