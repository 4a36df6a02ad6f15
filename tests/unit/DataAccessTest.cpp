// Datarefs: finding, checking, typed access through the owner, and who owns a name when.
#include <tuple>

#include "PluginFixture.h"
#include "VYRADataAccessInternal.h"
#include "VYRALoaderLifecycle.h"
#include "VYRAWatch.h"

namespace {

class DataAccess : public PluginFixture {
 protected:
  // A dataref that has accessors for an int at most, whatever types it declares.
  static VYRADataRef Publish(const char* name, int types, int writable, VYRAReadInt_f read = nullptr,
                             VYRAWriteInt_f write = nullptr) {
    return VYRARegisterDataAccessor(name, types, writable, read, write, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  }
};

TEST_F(DataAccess, AccessorsRunAsTheirOwnerWhileItIsEnabled) {
  const VYRAPluginID owner = AddPlugin("a");
  const VYRADataRef dataRef = RunAs(owner, [] {
    const auto read = [](void*) {
      trace.emplace_back("read");
      return VYRAGetMyID();
    };
    return Publish("test/who", VYRA_TYPE_INT | VYRA_TYPE_FLOAT, 0, read,
                   [](void*, int) { ADD_FAILURE() << "it is not writable"; });
  });
  RunAs(AddPlugin("b"), [&] {
    EXPECT_EQ(VYRAGetDatai(dataRef), owner);
    EXPECT_EQ(VYRAGetMyID(), 2);
    EXPECT_EQ(VYRAGetDataf(dataRef), 0.0F) << "there is no conversion, whatever was declared";
    VYRASetDatai(dataRef, 3);
  });
  EXPECT_EQ(VYRAGetDataRefTypes(dataRef), VYRA_TYPE_INT | VYRA_TYPE_FLOAT);
  VYRARegistrySetEnabled(owner, false);
  EXPECT_EQ(VYRAGetDatai(dataRef), 0);
  EXPECT_EQ(trace.size(), 1U);
}

TEST_F(DataAccess, EachTypeReachesItsOwnAccessorsWithItsOwnRefcon) {
  static int readMark = 1;
  static int writeMark = 2;
  static const auto write = [](const char* type, void* refcon, double value) {
    EXPECT_EQ(refcon, &writeMark);
    trace.push_back(type + std::to_string(static_cast<int>(value)));
  };
  static const auto read = [](int result, void* refcon, int offset, int max) {
    EXPECT_EQ(refcon, &readMark);
    trace.push_back("from " + std::to_string(offset) + " at most " + std::to_string(max));
    return result;
  };
  static const auto readOne = [](int result, void* refcon) {
    EXPECT_EQ(refcon, &readMark);
    return result;
  };
  const VYRADataRef all = VYRARegisterDataAccessor(
      "test/all", 63, 1, [](void* r) { return readOne(1, r); }, [](void* r, int v) { write("i", r, v); },
      [](void* r) { return static_cast<float>(readOne(2, r)); }, [](void* r, float v) { write("f", r, v); },
      [](void* r) { return static_cast<double>(readOne(3, r)); }, [](void* r, double v) { write("d", r, v); },
      [](void* r, int*, int offset, int max) { return read(4, r, offset, max); },
      [](void* r, int* v, int, int count) { write("vi", r, v[count - 1]); },
      [](void* r, float*, int offset, int max) { return read(5, r, offset, max); },
      [](void* r, float* v, int, int count) { write("vf", r, v[count - 1]); },
      [](void* r, void*, int offset, int max) { return read(6, r, offset, max); },
      [](void* r, void* v, int, int count) { write("b", r, static_cast<char*>(v)[count - 1]); }, &readMark,
      &writeMark);
  int ints[] = {4, 5};
  float floats[] = {6, 7};
  char bytes[] = {8, 9};
  EXPECT_EQ(std::tuple(VYRAGetDatai(all), VYRAGetDataf(all), VYRAGetDatad(all)), std::tuple(1, 2.0F, 3.0));
  EXPECT_EQ(VYRAGetDatavi(all, nullptr, -1, 4), 4);
  EXPECT_EQ(VYRAGetDatavf(all, floats, 2, 3), 5);
  EXPECT_EQ(VYRAGetDatab(all, bytes, 4, 5), 6);
  EXPECT_EQ(trace, (Lines{"from -1 at most 4", "from 2 at most 3", "from 4 at most 5"})) << "unchecked";
  trace.clear();
  VYRASetDatai(all, 1);
  VYRASetDataf(all, 2);
  VYRASetDatad(all, 3);
  VYRASetDatavi(all, ints, 0, 2);
  VYRASetDatavf(all, floats, 0, 2);
  VYRASetDatab(all, bytes, 0, 2);
  EXPECT_EQ(trace, (Lines{"i1", "f2", "d3", "vi5", "vf7", "b9"}));
}

TEST_F(DataAccess, NullHandlesAndMissingAccessorsAreNeutral) {
  for (const VYRADataRef dataRef : {VYRADataRef{nullptr}, Publish("test/bare", 0, 1)}) {
    int value = 1;
    VYRASetDatai(dataRef, 1);
    VYRASetDatab(dataRef, &value, 0, 4);
    EXPECT_EQ(VYRAGetDatad(dataRef), 0.0);
    EXPECT_EQ(VYRAGetDatavi(dataRef, &value, 0, 1), 0);
  }
  EXPECT_EQ(VYRACanWriteDataRef(nullptr), 0);
  EXPECT_EQ(VYRAGetDataRefTypes(nullptr), 0);
  EXPECT_EQ(VYRAFindDataRef(nullptr), nullptr);
  EXPECT_EQ(Publish(nullptr, 1, 1), nullptr);
}

TEST_F(DataAccess, NameKeepsItsHandleFromOwnerToOwner) {
  static int values[] = {0, 1, 2};  // by owner
  const auto publishAs = [](VYRAPluginID owner) {
    return RunAs(owner, [&] { return PublishInt("test/name", &values[owner]); });
  };
  for (const char* plugin : {"a", "b"}) AddPlugin(plugin);
  const VYRADataRef dataRef = publishAs(1);
  for (const VYRAPluginID late : {2, 1}) EXPECT_EQ(publishAs(late), dataRef);
  EXPECT_EQ(VYRAGetDatai(dataRef), 1);

  RunAs(1, [&] { VYRAUnregisterDataAccessor(dataRef); });
  EXPECT_EQ(VYRAFindDataRef("test/name"), nullptr);
  EXPECT_EQ(VYRAIsDataRefGood(dataRef), 0);
  EXPECT_EQ(VYRAGetDatai(dataRef), 0);
  EXPECT_EQ(VYRACanWriteDataRef(dataRef), 1);

  EXPECT_EQ(publishAs(2), dataRef);
  EXPECT_EQ(VYRAGetDatai(dataRef), 2);
  const std::string taken = "Dataref is already registered by someone else.";
  EXPECT_EQ(errors, (Lines{"2: " + taken, "1: " + taken}));
}

TEST_F(DataAccess, OnlyTheOwnerUnregistersAndOnlyRealHandles) {
  const VYRADataRef hosts = Publish("test/hosts", VYRA_TYPE_INT, 1);
  RunAs(AddPlugin("a"), [&] {
    const VYRADataRef own = Publish("test/own", VYRA_TYPE_INT, 1);
    for (const VYRADataRef dataRef : {hosts, VYRADataRef{nullptr}, own, own}) {
      VYRAUnregisterDataAccessor(dataRef);
    }
  });
  EXPECT_EQ(hosts->owner, 0);
  const std::string notOwned = "1: Dataref is not owned by you - you cannot unregsiter.";
  EXPECT_EQ(errors, (Lines{notOwned, "1: Dataref is illegal and cannot be unregistered.", notOwned}));
}

TEST_F(DataAccess, EveryNameAndHandleIsKnownAmongThousands) {
  const auto name = [](int i) { return "test/" + std::to_string(i); };
  std::vector<VYRADataRef> handles;
  handles.reserve(5000);
  for (int i = 0; i < 5000; ++i) handles.push_back(Publish(name(i).c_str(), VYRA_TYPE_INT, 1));
  for (int i = 0; i < 5000; i += 7) VYRAUnregisterDataAccessor(handles[static_cast<std::size_t>(i)]);
  for (int i = 0; i < 5000; ++i) {
    const VYRADataRef handle = handles[static_cast<std::size_t>(i)];
    const bool owned = i % 7 != 0;
    EXPECT_EQ(VYRAFindDataRef(name(i).c_str()), owned ? handle : nullptr) << i;
    EXPECT_EQ(VYRAIsDataRefGood(handle), owned ? 1 : 0) << i;
    EXPECT_EQ(DataIsValid(handle), handle) << i;
    EXPECT_EQ(gDataRefs.at(name(i)), handle) << i;
  }
  EXPECT_EQ(VYRAFindDataRef("test/5000"), nullptr);
  for (const VYRADataBlock* block = gDataBlock; block != nullptr; block = block->next) {
    auto* const before = const_cast<VYRAData_t*>(block->slots) - 1;
    EXPECT_EQ(DataIsValid(before), nullptr);
  }
}

TEST_F(DataAccess, LeavingPluginGivesUpWhatItStillOwnsAndNothingElse) {
  const VYRAPluginID leaver = AddPlugin("leaver");
  const VYRAPluginID other = AddPlugin("other");
  std::vector<VYRADataRef> handles;
  RunAs(leaver, [&] {
    for (const char* name : {"test/a", "test/b", "test/c", "test/d"}) {
      handles.push_back(Publish(name, VYRA_TYPE_INT, 1));
    }
    VYRAUnregisterDataAccessor(handles[1]);
    VYRAUnregisterDataAccessor(handles[2]);
  });
  RunAs(other, [] { return Publish("test/b", VYRA_TYPE_INT, 1); });
  RunAs(leaver, [] { return Publish("test/c", VYRA_TYPE_INT, 1); });
  UnloadOnePlugin(leaver);
  std::string owners;
  for (const VYRADataRef handle : handles) owners += std::to_string(handle->owner) + " ";
  EXPECT_EQ(owners, "-1 2 -1 -1 ");
}

TEST_F(DataAccess, HandlesStayWhileThePoolGrowsAndOnlySlotsHandedOutAreGood) {
  const auto name = [](std::size_t i) { return "test/" + std::to_string(i); };
  std::vector<VYRADataRef> handles;
  for (std::size_t i = 0; i < 33; ++i) handles.push_back(Publish(name(i).c_str(), VYRA_TYPE_INT, 1));
  EXPECT_EQ(gDataCount, 33);
  ASSERT_NE(gDataBlock->next, nullptr);
  EXPECT_EQ(gDataBlock->next, gDataFree);
  for (std::size_t i = 0; i < 33; ++i) {
    EXPECT_EQ(VYRAFindDataRef(name(i).c_str()), handles[i]);
    EXPECT_EQ(VYRAIsDataRefGood(handles[i]), 1);
  }
  const auto inside = reinterpret_cast<VYRADataRef>(reinterpret_cast<char*>(handles[3]) + 1);
  const auto behind = handles[32] + 1;  // the last slot handed out
  const auto elsewhere = reinterpret_cast<VYRADataRef>(&handles);
  for (const VYRADataRef bad : {inside, behind, elsewhere, VYRADataRef{nullptr}}) {
    EXPECT_EQ(VYRAIsDataRefGood(bad), 0);
  }
  EXPECT_STREQ(DebugDataRefName(handles[32]), "test/32");
  EXPECT_STREQ(DebugDataRefName(nullptr), "(null dataref)");
  EXPECT_STREQ(DebugDataRefName(elsewhere), "(invalid dataref)");
}

TEST_F(DataAccess, AccessorMayUnregisterItsDatarefAndPublishMoreWhileItIsRead) {
  static VYRADataRef self;
  self = Publish("test/self", VYRA_TYPE_INT, 0, [](void*) {
    static int value = 9;
    VYRAUnregisterDataAccessor(self);
    for (int i = 0; i < 100; ++i) PublishInt(("test/more/" + std::to_string(i)).c_str(), &value);
    return VYRAGetDatai(VYRAFindDataRef("test/more/99"));
  });
  EXPECT_EQ(VYRAGetDatai(self), 9);
  EXPECT_EQ(VYRAGetDatai(self), 0);
}

TEST_F(DataAccess, HostSeesWhatIsPublishedByWhomInTheOrderOfNames) {
  const VYRAPluginID plugin = AddPlugin("p");
  Publish("test/b", VYRA_TYPE_INT | VYRA_TYPE_FLOAT, 1);
  RunAs(plugin, [] { Publish("test/a", VYRA_TYPE_DATA, 0); });
  VYRAUnregisterDataAccessor(Publish("test/aa", VYRA_TYPE_INT, 1));

  VYRADataRefInfo infos[2] = {};
  ASSERT_EQ(VYRAGetDataRefs(infos, 1), 2) << "one has no room, and is counted";
  EXPECT_EQ(infos[1].name, nullptr);
  ASSERT_EQ(VYRAGetDataRefs(infos, 2), 2);
  EXPECT_STREQ(infos[0].name, "test/a");
  EXPECT_EQ(std::tuple(infos[0].types, infos[0].isWritable, infos[0].owner),
            std::tuple(VYRA_TYPE_DATA, 0, plugin));
  EXPECT_STREQ(infos[1].name, "test/b");
  EXPECT_EQ(std::tuple(infos[1].types, infos[1].isWritable, infos[1].owner),
            std::tuple(VYRA_TYPE_INT | VYRA_TYPE_FLOAT, 1, VYRA_HOST_PLUGIN));
}

}  // namespace
