// What happens when memory runs out in the middle of a plugin's call.
#include "Allocations.h"
#include "PluginFixture.h"
#include "VYRADataAccess.h"

namespace {

class OutOfMemory : public PluginFixture {
 protected:
  template <class Call>
  static void WithLittleMemory(Call call) {
    gLargestAllocation = 1'000'000;
    EXPECT_NO_THROW(call());
    gLargestAllocation = SIZE_MAX;
  }
};

TEST_F(OutOfMemory, WriteOfSharedDataThatFindsNoRoomChangesNothingAndTellsNobody) {
  const auto told = [](void*) { trace.emplace_back("told"); };
  VYRAShareData("test/shared", VYRA_TYPE_DATA, told, nullptr);
  const VYRADataRef item = VYRAFindDataRef("test/shared");
  char value = 5;
  VYRASetDatab(item, &value, 0, 1);
  value = 6;
  WithLittleMemory([&] { VYRASetDatab(item, &value, 2'000'000, 1); });
  EXPECT_EQ(trace.size(), 1U);
  EXPECT_EQ(VYRAGetDatab(item, nullptr, 0, 0), 1);
  VYRAGetDatab(item, &value, 0, 1);
  EXPECT_EQ(value, 5);
  WithLittleMemory([&] { VYRASetDatab(item, &value, 900'000, 1); });
  EXPECT_EQ(VYRAGetDatab(item, nullptr, 0, 0), 900'001) << "no more is asked for than is needed";
}

}  // namespace
