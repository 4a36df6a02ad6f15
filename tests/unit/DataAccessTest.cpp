// Datarefs: finding, checking, typed access through the owner, and who owns a name when.
#include <string>
#include <vector>

#include "PluginFixture.h"
#include "VYRADataAccessRegistry.h"

namespace {

class DataAccess : public PluginFixture {
 protected:
  static int Owner(VYRADataRef dataRef) { return dataRef->owner; }
};

TEST_F(DataAccess, AccessorsRunAsTheirOwnerWhileItIsEnabled) {
  static int asked = -1;
  const VYRAPluginID owner = AddPlugin("a");
  const VYRAPluginID reader = AddPlugin("b");
  const VYRADataRef dataRef = RunAs(owner, [] {
    return VYRARegisterDataAccessor(
        "test/who", VYRA_TYPE_INT | VYRA_TYPE_FLOAT, 0, [](void*) { return asked = VYRAGetMyID(); },
        [](void*, int) { ADD_FAILURE() << "it is not writable"; }, nullptr, nullptr, nullptr, nullptr,
        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  });
  RunAs(reader, [&] {
    EXPECT_EQ(VYRAGetDatai(dataRef), owner);
    EXPECT_EQ(VYRAGetMyID(), reader);
    EXPECT_EQ(VYRAGetDataf(dataRef), 0.0F) << "there is no conversion, whatever was declared";
    VYRASetDatai(dataRef, 3);
  });
  EXPECT_EQ(VYRAGetDataRefTypes(dataRef), VYRA_TYPE_INT | VYRA_TYPE_FLOAT);
  Record(owner).enabled = false;
  asked = -1;
  EXPECT_EQ(VYRAGetDatai(dataRef), 0);
  EXPECT_EQ(asked, -1);
}

TEST_F(DataAccess, EachTypeReachesItsOwnAccessorsWithItsOwnRefcon) {
  static int readMark = 1;
  static int writeMark = 2;
  static const auto write = [](const char* type, void* refcon, double value) {
    EXPECT_EQ(refcon, &writeMark);
    trace.push_back(type + std::to_string(static_cast<int>(value)));
  };
  static const auto read = [](void* refcon, int offset, int max) {
    EXPECT_EQ(refcon, &readMark);
    return 10 * offset + max;
  };
  const VYRADataRef all = VYRARegisterDataAccessor(
      "test/all", 63, 1, [](void* r) { return read(r, 0, 1); }, [](void* r, int v) { write("i", r, v); },
      [](void* r) { return static_cast<float>(read(r, 0, 2)); }, [](void* r, float v) { write("f", r, v); },
      [](void* r) { return static_cast<double>(read(r, 0, 3)); }, [](void* r, double v) { write("d", r, v); },
      [](void* r, int*, int offset, int max) { return read(r, offset, max); },
      [](void* r, int* v, int, int count) { write("vi", r, v[count - 1]); },
      [](void* r, float*, int offset, int max) { return 100 + read(r, offset, max); },
      [](void* r, float* v, int, int count) { write("vf", r, v[count - 1]); },
      [](void* r, void*, int offset, int max) { return 200 + read(r, offset, max); },
      [](void* r, void* v, int, int count) { write("b", r, static_cast<char*>(v)[count - 1]); }, &readMark,
      &writeMark);
  int ints[] = {4, 5};
  float floats[] = {6, 7};
  char bytes[] = {8, 9};
  EXPECT_EQ(VYRAGetDatai(all), 1);
  EXPECT_EQ(VYRAGetDataf(all), 2);
  EXPECT_EQ(VYRAGetDatad(all), 3);
  EXPECT_EQ(VYRAGetDatavi(all, nullptr, -1, 4), -6) << "offsets and counts pass unchecked";
  EXPECT_EQ(VYRAGetDatavf(all, floats, 2, 3), 123);
  EXPECT_EQ(VYRAGetDatab(all, bytes, 4, 5), 245);
  VYRASetDatai(all, 1);
  VYRASetDataf(all, 2);
  VYRASetDatad(all, 3);
  VYRASetDatavi(all, ints, 0, 2);
  VYRASetDatavf(all, floats, 0, 2);
  VYRASetDatab(all, bytes, 0, 2);
  EXPECT_EQ(trace, (Lines{"i1", "f2", "d3", "vi5", "vf7", "b9"}));
}

TEST_F(DataAccess, NullHandlesAndMissingAccessorsAreNeutral) {
  const VYRADataRef bare =
      VYRARegisterDataAccessor("test/bare", 0, 1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  for (const VYRADataRef dataRef : {VYRADataRef{nullptr}, bare}) {
    int value = 1;
    VYRASetDatai(dataRef, 1);
    VYRASetDatab(dataRef, &value, 0, 4);
    EXPECT_EQ(VYRAGetDatad(dataRef), 0.0);
    EXPECT_EQ(VYRAGetDatavi(dataRef, &value, 0, 1), 0);
  }
  EXPECT_EQ(VYRACanWriteDataRef(nullptr) + VYRAGetDataRefTypes(nullptr), 0);
  EXPECT_EQ(VYRAFindDataRef(nullptr), nullptr);
  EXPECT_EQ(VYRARegisterDataAccessor(nullptr, 1, 1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
            nullptr);
}

TEST_F(DataAccess, NameKeepsItsHandleFromOwnerToOwner) {
  int first = 1;
  int second = 2;
  const VYRAPluginID one = AddPlugin("a");
  const VYRAPluginID two = AddPlugin("b");
  const VYRADataRef dataRef = RunAs(one, [&] { return PublishInt("test/name", &first); });
  EXPECT_EQ(RunAs(two, [&] { return PublishInt("test/name", &second); }), dataRef);
  EXPECT_EQ(RunAs(one, [&] { return PublishInt("test/name", &second); }), dataRef);
  EXPECT_EQ(VYRAGetDatai(dataRef), 1);

  RunAs(one, [&] { VYRAUnregisterDataAccessor(dataRef); });
  EXPECT_EQ(VYRAFindDataRef("test/name"), nullptr);
  EXPECT_EQ(VYRAIsDataRefGood(dataRef), 0);
  EXPECT_EQ(VYRAGetDatai(dataRef), 0);
  EXPECT_EQ(VYRACanWriteDataRef(dataRef), 1);

  EXPECT_EQ(RunAs(two, [&] { return PublishInt("test/name", &second); }), dataRef);
  EXPECT_EQ(VYRAGetDatai(dataRef), 2);
  const std::string taken = "Dataref is already registered by someone else.";
  EXPECT_EQ(errors, (Lines{"2: " + taken, "1: " + taken}));
}

TEST_F(DataAccess, OnlyTheOwnerUnregistersAndOnlyRealHandles) {
  int value = 1;
  const VYRADataRef hosts = PublishInt("test/hosts", &value);
  RunAs(AddPlugin("a"), [&] {
    VYRAUnregisterDataAccessor(hosts);
    VYRAUnregisterDataAccessor(nullptr);
    const VYRADataRef own = PublishInt("test/own", &value);
    VYRAUnregisterDataAccessor(own);
    VYRAUnregisterDataAccessor(own);
  });
  EXPECT_EQ(Owner(hosts), 0);
  const std::string notOwned = "1: Dataref is not owned by you - you cannot unregsiter.";
  EXPECT_EQ(errors, (Lines{notOwned, "1: Dataref is illegal and cannot be unregistered.", notOwned}));
}

TEST_F(DataAccess, HandlesStayWhileThePoolGrowsAndOnlySlotsHandedOutAreGood) {
  static int value = 7;
  std::vector<VYRADataRef> handles;
  handles.reserve(33);
  for (int i = 0; i < 33; ++i) handles.push_back(PublishInt(("test/" + std::to_string(i)).c_str(), &value));
  EXPECT_EQ(gDataCount, 33);
  ASSERT_NE(gDataBlock->next, nullptr);
  EXPECT_EQ(gDataBlock->next, gDataFree);
  for (int i = 0; i < 33; ++i) {
    const VYRADataRef handle = handles[static_cast<std::size_t>(i)];
    EXPECT_EQ(VYRAFindDataRef(("test/" + std::to_string(i)).c_str()), handle);
    EXPECT_EQ(VYRAIsDataRefGood(handle), 1);
  }
  char* const address = reinterpret_cast<char*>(handles[3]);
  EXPECT_EQ(VYRAIsDataRefGood(reinterpret_cast<VYRADataRef>(address + 1)), 0);
  EXPECT_EQ(VYRAIsDataRefGood(handles[32] + 1), 0) << "behind the last slot handed out";
  EXPECT_EQ(VYRAIsDataRefGood(reinterpret_cast<VYRADataRef>(&value)), 0);
  EXPECT_EQ(VYRAIsDataRefGood(nullptr), 0);
  EXPECT_STREQ(DebugDataRefName(handles[32]), "test/32");
  EXPECT_STREQ(DebugDataRefName(nullptr), "(null dataref)");
  EXPECT_STREQ(DebugDataRefName(reinterpret_cast<VYRADataRef>(&value)), "(invalid dataref)");
}

TEST_F(DataAccess, AccessorMayUnregisterItsDatarefAndPublishMoreWhileItIsRead) {
  static VYRADataRef self;
  self = VYRARegisterDataAccessor(
      "test/self", VYRA_TYPE_INT, 0,
      [](void*) {
        static int value = 9;
        VYRAUnregisterDataAccessor(self);
        for (int i = 0; i < 100; ++i) PublishInt(("test/more/" + std::to_string(i)).c_str(), &value);
        return VYRAGetDatai(VYRAFindDataRef("test/more/99"));
      },
      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
      nullptr, nullptr);
  EXPECT_EQ(VYRAGetDatai(self), 9);
  EXPECT_EQ(VYRAGetDatai(self), 0);
}

}  // namespace
