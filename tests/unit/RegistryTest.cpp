// The registry, the dispatched plugin, and what the library says about plugins.
#include "VYRALoaderDispatch.h"

#include <string>

#include "PluginFixture.h"
#include "VYRAHostServices.h"
#include "VYRALoaderReports.h"

namespace {

using Registry = PluginFixture;

TEST(EmptyRegistry, OnlyTheHostMayBeCalled) {
  EXPECT_TRUE(StDispatchCallback(0, VYRA_CALL_MESSAGE)());
  EXPECT_FALSE(StDispatchCallback(1, VYRA_CALL_MESSAGE)());
  EXPECT_FALSE(StDispatchCallback(-1, VYRA_CALL_MESSAGE)());
  VYRA_dprintf("dropped: there is no service table yet\n");
  VYRADebugString("dropped as well");
  EXPECT_EQ(VYRAInitialized(), 0);
}

TEST_F(Registry, ScopeSwitchesThePluginEvenWhenItRefusesAndPutsItBack) {
  const VYRAPluginID plugin = AddPlugin("a");
  VYRARegistrySetEnabled(plugin, false);
  {
    const StDispatchCallback outer(plugin, VYRA_CALL_MESSAGE);
    EXPECT_FALSE(outer());
    EXPECT_EQ(VYRAGetMyID(), plugin);
    EXPECT_TRUE(RunAs(0, [] { return VYRAGetMyID() == 0; }));
    EXPECT_EQ(VYRAGetMyID(), plugin);
  }
  EXPECT_EQ(VYRAGetMyID(), 0);
  EXPECT_THROW(RunAs(plugin, []() -> int { throw 1; }), int);
  EXPECT_EQ(VYRAGetMyID(), 0);
}

TEST_F(Registry, EachOfManyPluginsIsEnabledByItselfAndNoneIsOnceItsPlaceIsGone) {
  constexpr int kPlugins = 700;
  for (int i = 1; i <= kPlugins; ++i) VYRARegistrySetEnabled(AddPlugin(std::to_string(i)), i % 3 == 0);
  for (int i = 1; i <= kPlugins; ++i) EXPECT_EQ(VYRAIsPluginEnabled(i), i % 3 == 0) << i;
  VYRARegistrySetEnabled(kPlugins, true);
  Record(kPlugins).stage = PluginStage::closed;
  Record(kPlugins).givesIDBack = true;
  VYRARegistryDropClosed();
  EXPECT_EQ(VYRACountPlugins(), kPlugins);
  EXPECT_EQ(VYRAIsPluginEnabled(kPlugins), 0);
  EXPECT_FALSE(StDispatchCallback(kPlugins, VYRA_CALL_MESSAGE)());
  VYRARegistryAppend({});
  EXPECT_EQ(VYRAIsPluginEnabled(kPlugins), 0);
}

TEST_F(Registry, HostIsFoundByItsPathAndByAnEmptySignature) {
  const VYRAPluginID plugin = AddPlugin("org.example.a");
  Record(plugin).path = "/somewhere/a.vyp";
  EXPECT_EQ(VYRAFindPluginBySignature("brelund.skyvora.skyvora"), -1);
  EXPECT_EQ(VYRAFindPluginByPath("brelund.skyvora.skyvora"), 0);
  EXPECT_EQ(VYRAFindPluginBySignature(""), 0);
  EXPECT_EQ(VYRAFindPluginBySignature("org.example.a"), plugin);
  EXPECT_EQ(VYRAFindPluginBySignature("org.example.A"), -1);
  EXPECT_EQ(VYRAFindPluginByPath("/somewhere/a.vyp"), plugin);
  EXPECT_EQ(VYRAFindPluginByPath(nullptr), -1);
  EXPECT_EQ(VYRAFindPluginByPath(""), -1) << "though a closed record has no other";
  EXPECT_EQ(VYRAGetNthPlugin(99), 99);
  EXPECT_EQ(VYRACountPlugins(), 2);
}

TEST_F(Registry, InfoIsCutToItsBuffersAndUnknownPluginsTouchNothing) {
  const VYRAPluginID plugin = AddPlugin(std::string(255, 's'));
  Record(plugin).name = std::string(300, 'n');
  char name[VYRA_PLUGIN_INFO_SIZE];
  char signature[VYRA_PLUGIN_INFO_SIZE];
  VYRAGetPluginInfo(plugin, name, nullptr, signature, nullptr);
  EXPECT_EQ(std::string(name), std::string(255, 'n'));
  EXPECT_EQ(std::string(signature), std::string(255, 's'));
  for (const VYRAPluginID unknown : {-1, 2, 1 << 30}) {
    VYRAGetPluginInfo(unknown, name, name, name, name);
    EXPECT_EQ(name[0], 'n');
    EXPECT_EQ(VYRAIsPluginEnabled(unknown), 0);
  }
}

TEST_F(Registry, CurrentPluginIsNamedWhateverItIs) {
  const VYRAPluginID plugin = AddPlugin("a");
  const auto nameOf = [](VYRAPluginID id) {
    return RunAs(id, [] { return std::string(VYRADebugGetCurrentPluginName()); });
  };
  EXPECT_EQ(nameOf(-1), "[NO_PLUGIN_ID]");
  EXPECT_EQ(nameOf(0), "[VYRA_PLUGIN_SKYVORA]");
  EXPECT_EQ(nameOf(-2), "[Bad plugin ID low]");
  EXPECT_EQ(nameOf(plugin + 1), "[Bad plugin ID high]");
  EXPECT_EQ(nameOf(plugin), "The a");
}

TEST_F(Registry, MisuseReachesTheCallersErrorCallbackAlone) {
  const VYRAPluginID plugin = AddPlugin("a");
  const VYRAPluginID silent = AddPlugin("b");
  RunAs(silent, [] { VYRASetErrorCallback(nullptr); });
  EXPECT_FALSE(RunAs(silent, [] { return VYRAHasError(); }));
  for (const VYRAPluginID id : {-1, 0, plugin, silent, 7}) RunAs(id, [] { VYRASendError("bad"); });
  EXPECT_EQ(errors, Lines{"1: bad"});
}

TEST_F(Registry, PluginsMayBeLoadedWhileAWarningIsWritten) {
  const VYRAPluginID plugin = AddPlugin(std::string(50, 'a'));
  gHost.onCall = [](const std::string&) {
    for (int i = 0; i < 40; ++i) AddPlugin("more");
  };
  RunAs(plugin, [] { VYRALogPluginWarning("careful"); });
  gHost.onCall = nullptr;
  EXPECT_EQ(gHost.log, "[The " + std::string(50, 'a') + "]: careful\n");
}

TEST_F(Registry, WarningsNameThePluginAndLongLinesAreCut) {
  RunAs(AddPlugin("a"), [] { VYRALogPluginWarning("careful"); });
  RunAs(-1, [] { VYRALogPluginWarning("who"); });
  EXPECT_EQ(gHost.log, "[The a]: careful\n[unknown]: who\n");
  gHost.log.clear();
  VYRA_dprintf("%s", std::string(9000, 'x').c_str());
  EXPECT_EQ(gHost.log, std::string(8191, 'x'));
}

}  // namespace
