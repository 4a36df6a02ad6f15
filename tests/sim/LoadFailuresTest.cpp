// Modules that cannot be loaded, each for one reason, which the report and the summary tell in words.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "SimulatorRun.h"
#include "host/ModuleFile.h"

namespace {

using nlohmann::json;

// What the report says of a module; empty when it says nothing.
std::string ReasonOf(const SimulatorRun& run, const std::string& path) {
  for (const json& failure : run.report.at("loadFailures"))
    if (failure.at("path") == path) return failure.at("reason");
  return "";
}

// A failed run that tells this one failure of this module, in the summary too.
void ExpectOnlyFailure(const SimulatorRun& run, const std::string& path, const std::string& reason) {
  EXPECT_EQ(run.exitCode, 1) << run.output << run.error;
  ASSERT_EQ(run.report.at("loadFailures").size(), 1U) << run.report.at("loadFailures");
  EXPECT_EQ(ReasonOf(run, path), reason) << run.report.at("loadFailures");
  EXPECT_NE(run.output.find("  " + path + ": " + reason + "\n"), std::string::npos) << run.output;
}

class LoadFailures : public testing::Test {
 protected:
  // What becomes of one module beside one that can be loaded.
  void Expect(const std::string& module, const std::string& reason) {
    const SimulatorFolder folder;
    folder.Install("reader", "reader/64/lin.vyp");
    const std::string path = folder.Install(module, "faulty/64/lin.vyp");
    ExpectOnlyFailure(folder.Fly(2), path, reason);
  }
  // Likewise, of a file with these bytes, as a loose module.
  void ExpectOfBytes(const std::string& bytes, const std::string& reason) {
    const SimulatorFolder folder;
    folder.Install("reader", "reader/64/lin.vyp");
    const std::string path = folder.Write(bytes, "faulty.vyp");
    ExpectOnlyFailure(folder.Fly(2), path, reason);
  }
};

TEST_F(LoadFailures, FilesThatAreNoModulesForThisMachine) {
  const std::string module = SimulatorFolder::Bytes("plain");
  std::string other = module;
  other[18] = '\xb7';  // the processor
  ExpectOfBytes(other, "it is built for another processor: AArch64, not x86-64");
  other = module;
  other[4] = 1;  // the class
  ExpectOfBytes(other, "it is a 32-bit module");
  other = module;
  other[16] = 2;  // the type: a program
  ExpectOfBytes(other, "it is no shared library");
  ExpectOfBytes(module.substr(0, 20), "it is cut short, at 20 bytes");
  ExpectOfBytes("This is no module.\n", "it is no shared library");
  ExpectOfBytes("", "it is empty");
}

// Its header is whole, and its segments are not in it.
TEST_F(LoadFailures, FileThatIsCutShortInItsSegmentsIsKnown) {
  const SimulatorFolder folder;
  const std::string path = folder.Write(SimulatorFolder::Bytes("plain").substr(0, 2000), "short.vyp");
  EXPECT_EQ(sim::FileFault(path), "it is cut short, at 2000 bytes");
  EXPECT_EQ(sim::FileFault(folder.Install("plain", "whole.vyp")), "");
}

// Nothing was opened whose words could be mistaken for those about another module.
TEST_F(LoadFailures, FilesThatAreNotEvenOpenedAreToldByTheirOwnPaths) {
  const SimulatorFolder folder;
  const std::string good = folder.Install("reader", "a name\nwith a line end.vyp");
  const std::string cut = folder.Write(SimulatorFolder::Bytes("plain").substr(0, 5000), "cut.vyp");
  const std::string longest = folder.Install("plain", std::string(251, 'm') + ".vyp");
  const std::string refusing = folder.Install("refuses-start", "n.vyp");
  const std::string pipe = folder.Plugins("pipe.vyp");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const SimulatorRun run = folder.Fly(2);
  EXPECT_EQ(run.report.at("loadFailures").size(), 3U) << run.report.at("loadFailures");
  EXPECT_EQ(ReasonOf(run, good), "");
  EXPECT_EQ(ReasonOf(run, longest), "");
  EXPECT_EQ(ReasonOf(run, cut), "it is cut short, at 5000 bytes");
  EXPECT_EQ(ReasonOf(run, refusing), "it refused to start: VyPluginStart returned 0");
  EXPECT_EQ(ReasonOf(run, pipe), "it is no regular file");
  for (const std::string& path : {good, longest}) {
    EXPECT_TRUE(std::ranges::any_of(run.report.at("plugins"), [&](const json& plugin) {
      return plugin.at("path") == path && plugin.at("state") == "enabled";
    })) << path;
  }
}

TEST_F(LoadFailures, StartFunctionsThatCannotBeCalled) {
  Expect("hidden-start", "it has VyPluginStart, but hidden: export it, as VYRA_PLUGIN_EXPORT does");
  Expect("mangled-start",
         "it has VyPluginStart under a C++ name: declare it extern \"C\", as VYRA_PLUGIN_EXPORT does");
}

TEST_F(LoadFailures, WhatAModuleNeedsAndDoesNotFind) {
  Expect("missing-library", "it needs the library libsim-test-absent.so, which is not found");
  Expect("undefined-symbol", "it uses NobodyHasThis, an undefined symbol that nothing defines");
}

TEST_F(LoadFailures, PluginsThatRefuse) {
  Expect("refuses-start", "it refused to start: VyPluginStart returned 0");
  Expect("refuses-enable", "it refused to be enabled: VyPluginEnable returned 0");
  Expect("nameless", "it gives an empty signature");
}

TEST_F(LoadFailures, DuplicateIsToldWithBothPaths) {
  const SimulatorFolder folder;
  const std::string first = folder.Install("plain", "a/64/lin.vyp");
  const std::string second = folder.Install("plain", "b/lin.vyp");
  ExpectOnlyFailure(folder.Fly(2), second,
                    "it has the signature org.skyvora.test.plain of " + first + ", which is loaded already");
}

TEST_F(LoadFailures, ModulesInWrongPlaces) {
  const SimulatorFolder folder;
  folder.Install("reader", "reader/64/lin.vyp");
  folder.Write("how to use it", "reader/64/readme.txt");
  folder.Write("a table", "data/table.csv");  // no plugin folder, and no fault
  const std::string fuel = folder.Install("plain", "fuel/fuel.vyp");
  const std::string deep = folder.Install("plain", "deep/linux/64/lin.vyp");
  const std::string loose = folder.Install("plain", "loose.so");
  const SimulatorRun run = folder.Fly(2);
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.report.at("loadFailures").size(), 3U) << run.report.at("loadFailures");
  EXPECT_EQ(ReasonOf(run, fuel), "fuel/ has fuel.vyp; it is looked for at fuel/64/lin.vyp");
  EXPECT_EQ(ReasonOf(run, deep), "deep/ has linux/64/lin.vyp; it is looked for at deep/64/lin.vyp");
  EXPECT_EQ(ReasonOf(run, loose), "a loose module's name must end in .vyp");
}

TEST_F(LoadFailures, FolderWithoutPluginsSaysWhereItLooked) {
  const SimulatorFolder folder;
  const SimulatorRun run = folder.Fly(1);
  EXPECT_NE(run.output.find("no plugins: looked for *.vyp, */64/lin.vyp and */lin.vyp in " +
                            folder.Path("Resources/plugins")),
            std::string::npos)
      << run.output;
}

TEST_F(LoadFailures, ExpectedOnesDoNotFailTheFlight) {
  const SimulatorFolder folder;
  folder.Install("reader", "reader/64/lin.vyp");
  folder.Write("", "empty.vyp");
  const SimulatorRun run = folder.FlyFile(2, {{"expectations", {{{"after", "start"}, {"loadFailures", 1}}}}});
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_EQ(run.report.at("loadFailures").size(), 1U);

  const SimulatorRun more =
      folder.FlyFile(2, {{"expectations", {{{"after", "start"}, {"loadFailures", 2}}}}});
  EXPECT_EQ(more.exitCode, 1);
  EXPECT_EQ(more.report.at("expectations").at(0).at("result"), "failed");
  EXPECT_EQ(more.report.at("expectations").at(0).at("found"),
            "1; " + folder.Plugins("empty.vyp") + ": it is empty");
}

}  // namespace
