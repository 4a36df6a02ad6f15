// Finding and loading modules: which are found, in which order, what is logged, and what a module that
// does not stay leaves behind.
#include <dlfcn.h>

#include <cstring>
#include <filesystem>

#include "ModuleTest.h"

class Discovery : public ModuleTest {};

TEST_F(Discovery, AdminComesFirstThenLooseModulesThenFoldersInByteOrder) {
  AddFolders(main, {"mike", "Alpha", "PluginAdmin", "VYRA.framework", "VyWidgets.framework"});
  for (const char* loose : {"zulu.vyp", "Beta.VYP", "PluginAdminTools.vyp"}) Add(main + loose);
  Add(main + "vyp");                 // no ending
  Add(main + "readmedir", nullptr);  // tried as a folder for the ending of its name
  std::filesystem::create_directories(main + "empty");
  StartTraced();
  EXPECT_EQ(Trace(),
            "PluginAdmin.start Beta.start zulu.start Alpha.start mike.start "
            "PluginAdmin.enable Beta.enable zulu.enable Alpha.enable mike.enable");
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
  const std::string taken = " (A version of this plugin is already loaded.)\n";
  std::string expected = "Fetching plugins for " + root + "Resources/plugins\n\n";
  expected += isBare(bare) + "Loaded: " + bare + " (test.bare).\n\n";
  expected += isBare(copy) + "Warning: " + copy + " Signature: test.bare." + taken;
  expected += "Loaded: " + good + " (test.good).\n\n";
  expected += "Warning: " + nameless + " Signature: ." + taken;
  expected +=
      "Failed: " + refusing + ". (The plugin refused to start by returning 0 from VyPluginStart.)\n\n";
  expected += lacks(startless, "VyPluginStart") + "Failed: " + startless +
              ".  (This file is a loadable DLL but is missing the VyPluginStart callback.)\n\n";
  expected += notLoaded(text) + "Failed: " + text +
              ".  (This file is missing, not a DLL or could not be loaded due to another missing DLL.)\n\n";
  EXPECT_EQ(gHost.log, expected + notLoaded(folderText));
}

TEST_F(Discovery, FolderFallsBackToTheModuleBesideThe64BitFolder) {
  AddFolders(main, {"good", "refusing"});
  Add(main + "broken/64/lin.vyp", nullptr);
  for (const char* name : {"good", "refusing", "broken", "old"}) Add(main + name + "/lin.vyp");
  On("refusing.start",
     [](Moment& moment) { moment.result = InfoOf(VYRAGetMyID()).find("/64/") == std::string::npos; });
  StartTraced();
  EXPECT_EQ(Trace(),
            "broken.start good.start old.start refusing.start refusing.start "
            "broken.enable good.enable old.enable refusing.enable");
  for (const std::string path : {"broken/", "good/64/", "old/", "refusing/"}) {
    EXPECT_GT(VYRAFindPluginByPath((main + path + "lin.vyp").c_str()), 0) << path;
  }
}

TEST_F(Discovery, StartRunsAsTheNewPluginWhoseNameIsStillItsPlace) {
  const std::string path = Add(main + "fuel/64/lin.vyp");
  std::string inStart;
  On("fuel.start", [&](Moment&) {
    EXPECT_EQ(VYRACountPlugins(), 2);
    EXPECT_EQ(VYRAIsPluginEnabled(1), 0);
    inStart = InfoOf(VYRAGetMyID());
  });
  Start();
  EXPECT_EQ(inStart, "fuel/64/lin.vyp|" + path + "||" + path);
  EXPECT_EQ(InfoOf(1), "fuel|" + path + "|test.fuel|Plugin fuel of a test");
  EXPECT_EQ(VYRAGetMyID(), 0);
}

TEST_F(Discovery, TextsWithoutATerminatorAreReadNoFurtherThanTheirBuffers) {
  const std::string path = Add(main + "long.vyp");
  On("long.start", [](Moment& moment) {
    std::memset(moment.outName, 'n', VYRA_PLUGIN_INFO_SIZE);
    std::memset(moment.outSignature, 's', VYRA_PLUGIN_INFO_SIZE);
    std::memset(moment.outDescription, 'd', VYRA_PLUGIN_INFO_SIZE);
  });
  Start();
  EXPECT_EQ(VYRAFindPluginBySignature(std::string(256, 's').c_str()), 1);
  const auto cut = [](char letter) { return std::string(255, letter); };
  EXPECT_EQ(InfoOf(1), cut('n') + "|" + path + "|" + cut('s') + "|" + cut('d'));
}

TEST_F(Discovery, RejectedPluginLeavesNothingBehindAndItsIdIsGivenOutAgain) {
  for (const char* loose : {"a.vyp", "c.vyp"}) Add(main + loose);
  AddFolders(main, {"b", "d"});
  for (const char* start : {"a.start", "c.start"}) {
    On(start, [](Moment& moment) {
      EXPECT_EQ(VYRAGetMyID(), 1);
      RegisterAll(moment);
      const bool refuses = *moment.plugin == 'a';
      moment.result = refuses ? 0 : 1;
      if (!refuses) *moment.outSignature = '\0';
    });
  }
  StartTraced();
  EXPECT_EQ(Trace(), "a.start c.start c.stop b.start d.start b.enable d.enable");
  EXPECT_FALSE(IsMapped(main + "a.vyp"));
  EXPECT_FALSE(IsMapped(main + "c.vyp"));
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

TEST_F(Discovery, FilterIsAskedAboutEachModuleThatIsThereAndWhatItPassesOverIsAsIfItWereNot) {
  AddFolders(main, {"PluginAdmin", "both"});
  AddFolders(aircraft, {"gauges", "radio"});
  Add(main + "both/lin.vyp");
  Add(main + "text.vyp", nullptr);
  Add(main + "zulu.vyp");
  static std::vector<std::string> asked;
  VYRASetModuleFilter(
      [](const char* path, void* refcon) {
        asked.push_back(std::string(path).substr(static_cast<const std::string*>(refcon)->size()));
        const std::string& last = asked.back();
        return last.ends_with("text.vyp") || last.ends_with("both/64/lin.vyp") ||
                       last.ends_with("radio/64/lin.vyp")
                   ? 0
                   : -1;
      },
      const_cast<std::string*>(&root));
  StartTraced();
  EXPECT_EQ(Trace(), "PluginAdmin.start zulu.start both.start PluginAdmin.enable zulu.enable both.enable");
  LoadPlane();
  EXPECT_NE(Id("gauges"), VYRA_NO_PLUGIN);
  EXPECT_EQ(Id("radio"), VYRA_NO_PLUGIN);
  EXPECT_NE(VYRAFindPluginByPath((main + "both/lin.vyp").c_str()), VYRA_NO_PLUGIN);
  EXPECT_EQ(gHost.log.find("text.vyp"), std::string::npos) << gHost.log;
  const std::string plugins = "Resources/plugins/";
  EXPECT_EQ(asked, (std::vector<std::string>{plugins + "PluginAdmin/64/lin.vyp", plugins + "text.vyp",
                                             plugins + "zulu.vyp", plugins + "both/64/lin.vyp",
                                             plugins + "both/lin.vyp", "Aircraft/plugins/gauges/64/lin.vyp",
                                             "Aircraft/plugins/radio/64/lin.vyp"}));

  VYRASetModuleFilter(nullptr, nullptr);
  VYRAReloadPlugins();
  Pass();
  EXPECT_NE(Id("radio"), VYRA_NO_PLUGIN);
}
