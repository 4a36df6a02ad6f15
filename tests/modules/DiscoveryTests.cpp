// Finding and loading modules: which are found, in which order, what is logged, and what a module that
// does not stay leaves behind.
#include <dlfcn.h>

#include <cstring>
#include <filesystem>

#include "ModuleTest.h"

class Discovery : public ModuleTest {};

TEST_F(Discovery, AdminComesFirstThenLooseModulesThenFoldersInByteOrder) {
  AddFolders(main, {"mike", "Alpha", "PluginAdmin", "VYRA.framework", "VyWidgets.framework"});
  Add(main + "zulu.vyp");
  Add(main + "Beta.VYP");
  Add(main + "PluginAdminTools.vyp");
  Add(main + "vyp");                 // no ending
  Add(main + "readmedir", nullptr);  // tried as a folder for the ending of its name
  std::filesystem::create_directories(main + "empty");
  Start();
  std::string names;
  for (int id = 1; id < VYRACountPlugins(); ++id) names += InfoOf(id).name + " ";
  EXPECT_EQ(names, "PluginAdmin Beta zulu Alpha mike ");
  EXPECT_EQ(gHost.CallsOf("ShowLoadingStatus"),
            (std::vector<std::string>{"ShowLoadingStatus(Loading Plugin: Beta.VYP)",
                                      "ShowLoadingStatus(Loading Plugin: zulu.vyp)"}));
}

TEST_F(Discovery, EveryOutcomeOfALoadHasItsOwnLogLine) {
  const std::string bare = Add(main + "bare.vyp", BARE_MODULE);
  const std::string copy = Add(main + "copy.vyp", BARE_MODULE);
  const std::string good = Add(main + "good.vyp");
  const std::string nameless = Add(main + "nameless.vyp");
  const std::string refusing = Add(main + "refusing.vyp");
  const std::string startless = Add(main + "startless.vyp", STARTLESS_MODULE);
  const std::string text = Add(main + "text.vyp", nullptr);
  const std::string folderText = Add(main + "text/lin.vyp", nullptr);
  On("nameless.start", [](Moment& moment) { *moment.outSignature = '\0'; });
  On("refusing.start", [](Moment& moment) { moment.result = 0; });
  Start();

  const auto notLoaded = [](const std::string& path) {
    EXPECT_EQ(dlopen(path.c_str(), RTLD_NOW), nullptr);
    return "dlerror:" + std::string(dlerror()) + "\n";
  };
  const auto lacks = [](const std::string& path, const char* symbol) {
    return "dlerror:" + path + ": undefined symbol: " + symbol + "\n";
  };
  const auto isBare = [&](const std::string& path) {
    return lacks(path, "VyPluginStop") + lacks(path, "VyPluginEnable") + lacks(path, "VyPluginDisable") +
           lacks(path, "VyPluginReceiveMessage");
  };
  std::string expected = "Fetching plugins for " + root + "Resources/plugins\n\n";
  expected += isBare(bare) + "Loaded: " + bare + " (test.bare).\n\n";
  expected += isBare(copy) + "Warning: " + copy +
              " Signature: test.bare. (A version of this plugin is already loaded.)\n";
  expected += "Loaded: " + good + " (test.good).\n\n";
  expected += "Warning: " + nameless + " Signature: . (A version of this plugin is already loaded.)\n";
  expected +=
      "Failed: " + refusing + ". (The plugin refused to start by returning 0 from VyPluginStart.)\n\n";
  expected += lacks(startless, "VyPluginStart") + "Failed: " + startless +
              ".  (This file is a loadable DLL but is missing the VyPluginStart callback.)\n\n";
  expected += notLoaded(text) + "Failed: " + text +
              ".  (This file is missing, not a DLL or could not be loaded due to another missing DLL.)\n\n";
  expected += notLoaded(folderText);
  EXPECT_EQ(gHost.log, expected);
}

TEST_F(Discovery, FolderFallsBackToTheModuleBesideThe64BitFolder) {
  for (const char* name : {"good", "refusing"}) {
    Add(main + name + "/64/lin.vyp");
    Add(main + name + "/lin.vyp");
  }
  Add(main + "broken/64/lin.vyp", nullptr);
  Add(main + "broken/lin.vyp");
  Add(main + "old/lin.vyp");
  On("refusing.start",
     [](Moment& moment) { moment.result = InfoOf(VYRAGetMyID()).path.find("/64/") == std::string::npos; });
  StartTraced();
  EXPECT_EQ(Trace(),
            "broken.start good.start old.start refusing.start refusing.start "
            "broken.enable good.enable old.enable refusing.enable");
  EXPECT_EQ(InfoOf(Id("good")).path, main + "good/64/lin.vyp");
  for (const char* name : {"broken", "old", "refusing"})
    EXPECT_EQ(InfoOf(Id(name)).path, main + name + "/lin.vyp");
}

TEST_F(Discovery, FolderWhoseNameEndsInDirIsTriedTwice) {
  AddFolders(main, {"Airdir"});
  StartTraced();
  EXPECT_EQ(Trace(), "Airdir.start Airdir.start Airdir.stop Airdir.enable");
  EXPECT_EQ(VYRACountPlugins(), 2);
}

TEST_F(Discovery, StartRunsAsTheNewPluginWhoseNameIsStillItsPlace) {
  const std::string path = Add(main + "fuel/64/lin.vyp");
  bool asked = false;
  On("fuel.start", [&](Moment&) {
    const Info info = InfoOf(VYRAGetMyID());
    EXPECT_EQ(VYRAGetMyID(), 1);
    EXPECT_EQ(VYRACountPlugins(), 2);
    EXPECT_EQ(VYRAIsPluginEnabled(1), 0);
    EXPECT_EQ(info.name + "|" + info.path + "|" + info.signature + "|" + info.description,
              "fuel/64/lin.vyp|" + path + "||" + path);
    asked = true;
  });
  Start();
  EXPECT_TRUE(asked);
  const Info info = InfoOf(1);
  EXPECT_EQ(info.name + "|" + info.path + "|" + info.signature + "|" + info.description,
            "fuel|" + path + "|test.fuel|Plugin fuel of a test");
  EXPECT_EQ(VYRAFindPluginByPath(path.c_str()), 1);
  EXPECT_EQ(VYRAGetMyID(), 0);
}

TEST_F(Discovery, TextsWithoutATerminatorAreReadNoFurtherThanTheirBuffers) {
  Add(main + "long.vyp");
  On("long.start", [](Moment& moment) {
    std::memset(moment.outName, 'n', VYRA_PLUGIN_INFO_SIZE);
    std::memset(moment.outSignature, 's', VYRA_PLUGIN_INFO_SIZE);
    std::memset(moment.outDescription, 'd', VYRA_PLUGIN_INFO_SIZE);
  });
  Start();
  ASSERT_EQ(VYRACountPlugins(), 2);
  EXPECT_EQ(VYRAFindPluginBySignature(std::string(256, 's').c_str()), 1);
  EXPECT_EQ(InfoOf(1).name, std::string(255, 'n'));
  EXPECT_EQ(InfoOf(1).description, std::string(255, 'd'));
}

TEST_F(Discovery, RejectedPluginLeavesNothingBehindAndItsIdIsGivenOutAgain) {
  const std::string refusing = Add(main + "a.vyp");
  const std::string duplicate = Add(main + "c.vyp");
  AddFolders(main, {"b", "d"});
  On("a.start", [](Moment& moment) {
    EXPECT_EQ(VYRAGetMyID(), 1);
    RegisterAll(moment);
    moment.result = 0;
  });
  On("c.start", [](Moment& moment) {
    EXPECT_EQ(VYRAGetMyID(), 1);
    RegisterAll(moment);
    *moment.outSignature = '\0';
  });
  StartTraced();
  EXPECT_EQ(Trace(), "a.start c.start c.stop b.start d.start b.enable d.enable");
  EXPECT_FALSE(IsMapped(refusing));
  EXPECT_FALSE(IsMapped(duplicate));
  EXPECT_EQ(VYRACountPlugins(), 3);
  EXPECT_EQ(Id("b"), 1);
  EXPECT_EQ(VYRAFindDataRef("test/a"), nullptr);
  EXPECT_EQ(VYRAFindDataRef("test/c"), nullptr);
  Pass();
  VYRASetDatai(VYRAFindDataRef("test/shared"), 5);
  EXPECT_EQ(VYRAGetDatai(VYRAFindDataRef("test/shared")), 5);
  EXPECT_EQ(Trace(), "");
}

TEST_F(Discovery, SceneryPluginsAreAllStartedBeforeTheFirstIsEnabled) {
  AddFolders(scenery, {"sea", "lake"});
  Add(scenery + "loose.vyp");
  Start();
  gHost.log.clear();
  LoadScenery();
  EXPECT_EQ(Trace(), "lake.start sea.start lake.enable sea.enable");
  EXPECT_EQ(gHost.log.find("Fetching plugins for " + root + "Scenery/plugins\n\nLoaded: "), 0u) << gHost.log;
  gHost.log.clear();
  Event(VYRA_EVENT_SCENERY_PACKAGE, (root + "Nowhere/").c_str());
  EXPECT_EQ(gHost.log, "");
}
