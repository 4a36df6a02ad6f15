// Shared data: values that the library keeps, and who is told of a write.
#include <climits>
#include <string>

#include "PluginFixture.h"
#include "VYRADataAccess.h"

namespace {

class SharedData : public PluginFixture {
 protected:
  // Notes the refcon's text and the plugin that is told.
  static void Note(void* refcon) {
    trace.push_back(static_cast<const char*>(refcon) + std::to_string(VYRAGetMyID()));
  }
  static int Share(const char* name, int type, const char* note) {
    return VYRAShareData(name, type, Note, const_cast<char*>(note));
  }
  static int Unshare(const char* name, int type, const char* note) {
    return VYRAUnshareData(name, type, Note, const_cast<char*>(note));
  }
  static constexpr const char* kName = "test/shared";
};

TEST_F(SharedData, ItemIsADatarefOfTheHostWithOneTypeForGood) {
  RunAs(AddPlugin("a"), [] { EXPECT_EQ(VYRAShareData(kName, VYRA_TYPE_INT, nullptr, nullptr), 1); });
  EXPECT_EQ(VYRAShareData(kName, VYRA_TYPE_FLOAT, nullptr, nullptr), 0);
  EXPECT_EQ(VYRAShareData(nullptr, VYRA_TYPE_INT, nullptr, nullptr), 0);
  const VYRADataRef item = VYRAFindDataRef(kName);
  EXPECT_EQ(VYRACanWriteDataRef(item), 1);
  VYRASetDatai(item, 42);
  VYRASetDataf(item, 1.5F);
  EXPECT_EQ(VYRAGetDatai(item), 42);
  EXPECT_EQ(VYRAGetDataf(item), 0.0F);

  VYRAShareData("test/float", VYRA_TYPE_FLOAT, nullptr, nullptr);
  VYRAShareData("test/double", VYRA_TYPE_DOUBLE, nullptr, nullptr);
  VYRASetDataf(VYRAFindDataRef("test/float"), 2.5F);
  VYRASetDatad(VYRAFindDataRef("test/double"), 3.25);
  EXPECT_EQ(VYRAGetDataf(VYRAFindDataRef("test/float")), 2.5F);
  EXPECT_EQ(VYRAGetDatad(VYRAFindDataRef("test/double")), 3.25);
  EXPECT_EQ(VYRAShareData("test/odd", 3, nullptr, nullptr), 1);
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef("test/odd")), 0);
}

TEST_F(SharedData, ArraysGrowWithWritesAndNeverShrink) {
  VYRAShareData(kName, VYRA_TYPE_INT_ARRAY, nullptr, nullptr);
  const VYRADataRef item = VYRAFindDataRef(kName);
  EXPECT_EQ(VYRAGetDatavi(item, nullptr, 0, 0), 1);
  int values[10] = {1, 2, 3, 4, 5};
  VYRASetDatavi(item, values, 0, 5);
  EXPECT_EQ(VYRAGetDatavi(item, nullptr, 0, 0), 5);
  values[0] = 9;
  VYRASetDatavi(item, values, 0, 1);
  EXPECT_EQ(VYRAGetDatavi(item, nullptr, 0, 0), 5);
  int read[10] = {};
  EXPECT_EQ(VYRAGetDatavi(item, read, 3, 10), 2);
  EXPECT_EQ(read[1], 5);
  EXPECT_EQ(VYRAGetDatavi(item, read, 0, 1), 1);
  EXPECT_EQ(read[0], 9);

  VYRAShareData("test/bytes", VYRA_TYPE_DATA, nullptr, nullptr);
  const VYRADataRef bytes = VYRAFindDataRef("test/bytes");
  EXPECT_EQ(VYRAGetDatab(bytes, nullptr, 0, 0), 1);
  VYRASetDatab(bytes, values, 7, 4);
  EXPECT_EQ(VYRAGetDatab(bytes, nullptr, 0, 0), 11);
}

TEST_F(SharedData, RangesOutsideTheItemCopyNothingAndChangeNothing) {
  Share(kName, VYRA_TYPE_FLOAT_ARRAY, "told");
  const VYRADataRef item = VYRAFindDataRef(kName);
  float value = 1;
  VYRASetDatavf(item, &value, -1, 1);
  VYRASetDatavf(item, &value, 0, -1);
  VYRASetDatavf(item, nullptr, 0, 1);
  VYRASetDatavf(item, &value, INT_MAX, 1);
  EXPECT_EQ(trace, Lines());
  EXPECT_EQ(VYRAGetDatavf(item, nullptr, 0, 0), 1);
  EXPECT_EQ(VYRAGetDatavf(item, &value, -1, 1), 0);
  EXPECT_EQ(VYRAGetDatavf(item, &value, 1, 1), 0);
  EXPECT_EQ(VYRAGetDatavf(item, &value, 0, -1), 0);
}

TEST_F(SharedData, EveryWriteTellsEverySubscriberInTurnAsItself) {
  const VYRAPluginID one = AddPlugin("a");
  const VYRAPluginID two = AddPlugin("b");
  RunAs(two, [] { Share(kName, VYRA_TYPE_INT, "x"); });
  RunAs(one, [] { Share(kName, VYRA_TYPE_INT, "y"); });
  RunAs(two, [] { Share(kName, VYRA_TYPE_INT, "x"); });
  const VYRADataRef item = VYRAFindDataRef(kName);
  RunAs(one, [&] { VYRASetDatai(item, 0); });
  EXPECT_EQ(trace, (Lines{"x2", "y1", "x2"}));
  trace.clear();
  Record(two).enabled = false;
  VYRASetDatai(item, 0);
  EXPECT_EQ(trace, Lines{"y1"});
}

TEST_F(SharedData, SubscriptionEndsOnlyForItsOwnPluginCallbackAndRefcon) {
  const VYRAPluginID plugin = AddPlugin("a");
  RunAs(plugin, [] {
    Share(kName, VYRA_TYPE_INT, "x");
    EXPECT_EQ(Unshare(kName, VYRA_TYPE_INT, "y"), 0);
    EXPECT_EQ(Unshare(kName, VYRA_TYPE_FLOAT, "x"), 0);
    EXPECT_EQ(Unshare("test/none", VYRA_TYPE_INT, "x"), 0);
    EXPECT_EQ(VYRAUnshareData(kName, VYRA_TYPE_INT, nullptr, nullptr), 0);
  });
  EXPECT_EQ(Unshare(kName, VYRA_TYPE_INT, "x"), 0) << "the host did not subscribe";
  VYRASetDatai(VYRAFindDataRef(kName), 1);
  EXPECT_EQ(trace, Lines{"x1"});
  EXPECT_EQ(RunAs(plugin, [] { return Unshare(kName, VYRA_TYPE_INT, "x"); }), 1);
  VYRASetDatai(VYRAFindDataRef(kName), 2);
  EXPECT_EQ(trace, Lines{"x1"});
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef(kName)), 2);
}

TEST_F(SharedData, SubscribersMayLeaveAndJoinWhileTheyAreTold) {
  static const char* const note = "late";
  const auto leaveAndJoin = [](void*) {
    trace.emplace_back("leaves");
    EXPECT_EQ(Unshare(kName, VYRA_TYPE_INT, note), 1);
    EXPECT_EQ(Unshare(kName, VYRA_TYPE_INT, note), 0);
    Share(kName, VYRA_TYPE_INT, "joined");
  };
  VYRAShareData(kName, VYRA_TYPE_INT, leaveAndJoin, nullptr);
  Share(kName, VYRA_TYPE_INT, note);
  Share(kName, VYRA_TYPE_INT, "stays");
  VYRASetDatai(VYRAFindDataRef(kName), 1);
  EXPECT_EQ(trace, (Lines{"leaves", "stays0"}));
  VYRAUnshareData(kName, VYRA_TYPE_INT, leaveAndJoin, nullptr);
  trace.clear();
  VYRASetDatai(VYRAFindDataRef(kName), 2);
  EXPECT_EQ(trace, (Lines{"stays0", "joined0"}));
}

TEST_F(SharedData, NameOfALiveOwnerStaysItsOwnAndTheItemHasNoDataref) {
  static int value = 5;
  const VYRAPluginID owner = AddPlugin("a");
  RunAs(owner, [] { PublishInt(kName, &value); });
  EXPECT_EQ(Share(kName, VYRA_TYPE_INT, "x"), 1);
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef(kName)), 5);
  VYRASetDatai(VYRAFindDataRef(kName), 6);
  EXPECT_EQ(value, 6);
  EXPECT_EQ(trace, Lines());
}

}  // namespace
