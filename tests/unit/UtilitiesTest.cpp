// Paths, folder listings, data files, keys, held buttons and versions.
#include "VYRAUtilities.h"

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <tuple>

#include "Forwarding.h"
#include "PluginFixture.h"
#include "VYRAUtilitiesKeys.h"

namespace {

using Utilities = PluginFixture;

TEST_F(Utilities, PlainServicesGetTheirArgumentsAsTheyAre) {
  using Host = VYRAHostServices;
  ExpectForwards(VYRASimulateKeyPress, &Host::SimulateKeyPress);
  ExpectForwards(VYRASpeakString, &Host::SpeakString);
  ExpectForwards(VYRACommandKeyStroke, &Host::CommandKeyStroke);
  ExpectForwards(VYRAReloadScenery, &Host::ReloadScenery);
  ExpectForwards(VYRAGetLanguage, &Host::GetLanguage);
  ExpectForwards(VYRAFindSymbol, &Host::FindSymbol);
}

TEST_F(Utilities, ButtonsAreHeldOncePerPressUntilReleased) {
  gHost.services.CommandButtonPress = [](const int* buttons, int up, int pass) {
    trace.push_back((up != 0 ? "up" : "down") + std::to_string(pass));
    for (; *buttons != 0; ++buttons) trace.back().append(" ").append(std::to_string(*buttons));
  };
  VYRADoRepeatedButtons();  // nothing is held, so the host is not called
  for (const int button : {5, 3, 5}) VYRACommandButtonPress(button);
  for (const int button : {5, 9}) VYRACommandButtonRelease(button);
  EXPECT_EQ(trace, (Lines{"down0 5", "down1 5", "down0 3", "down1 3", "down0 5", "down1 5", "up0 5", "up1 5",
                          "up0 9", "up1 9"}));
  VYRACommandButtonPress(0);
  VYRADoRepeatedButtons();
  EXPECT_EQ(trace.back(), "down1 3 5") << "0 would end the list early";
  for (const int button : {3, 5}) VYRACommandButtonRelease(button);
  trace.clear();
  VYRADoRepeatedButtons();
  EXPECT_EQ(trace, Lines());
}

TEST_F(Utilities, ListOfHeldButtonsStaysWhileTheHostsCallChangesIt) {
  for (const int button : {1, 2}) VYRACommandButtonPress(button);
  gHost.services.CommandButtonPress = [](const int* buttons, int, int) {
    if (buttons[0] == 7) return;
    for (int i = 0; i < 100; ++i) VYRACommandButtonPress(7);
    EXPECT_EQ(std::vector<int>(buttons, buttons + 3), (std::vector<int>{1, 2, 0}));
  };
  VYRADoRepeatedButtons();
  EXPECT_EQ(gButtons.size(), 102U);
}

TEST_F(Utilities, ButtonIsReleasedAlsoWhenTheHostsCallEndsByAnException) {
  VYRACommandButtonPress(5);
  gHost.services.CommandButtonPress = [](const int*, int, int) { throw 1; };
  EXPECT_THROW(VYRACommandButtonRelease(5), int);
  EXPECT_EQ(gButtons, std::vector<int>());
}

TEST_F(Utilities, KeysHaveTheirNames) {
  const auto name = [](int key) { return std::string(VYRAGetVirtualKeyDescription(static_cast<char>(key))); };
  std::string names;
  for (const int key : {0x08, 0x2F, 0x39, 0x5A, 0x69, 0x6D, 0x87, 0xB2, 0xB6, 0xBD}) names += name(key) + " ";
  EXPECT_EQ(names, "Backspace Help 9 Z Numpad-9 Numpad-- F24 ] \\ Numpad-= ");
  int unnamed = 0;
  for (int key = 0; key < 256; ++key) unnamed += name(key) == "Unknown" ? 1 : 0;
  EXPECT_EQ(unnamed, 256 - 110);
}

TEST_F(Utilities, VersionsGoWhereTheyBelong) {
  gHost.services.GetVersions = [](int* outHost, int* outId) { *outHost = 900, *outId = 3; };
  int host = 0, library = 0, id = 0;
  VYRAGetVersions(&host, &library, &id);
  VYRAGetVersions(nullptr, nullptr, nullptr);
  EXPECT_EQ(std::tuple(host, library, id), std::tuple(900, 210, 3));
}

TEST_F(Utilities, PathsOfTheHostAreCutOnlyForCallersWithoutNativePaths) {
  gHost.services.GetSystemPath = gHost.services.GetPrefsPath = [](char* outPath) {
    std::strcpy(outPath, std::string(600, 'x').c_str());
  };
  for (const auto get : {VYRAGetSystemPath, VYRAGetPrefsPath}) {
    RunAs(AddPlugin("a"), [&] {
      char path[1024];
      get(nullptr);
      get(path);
      EXPECT_EQ(std::strlen(path), 511U);
      VYRAEnableFeature(VYRA_FEATURE_NATIVE_PATHS, 1);
      get(path);
      EXPECT_EQ(std::strlen(path), 600U);
    });
  }
}

TEST_F(Utilities, PathsAreSplitAtTheirLastSeparator) {
  std::string parts;
  for (std::string path : {"/foo/bar", "/foo/bar/", "/foo", "foo", "a/", "/", "//", ""}) {
    const char* const folder = path.data();
    const char* const name = VYRAExtractFileAndPath(path.data());
    EXPECT_GE(name, folder);
    parts.append(folder).append("|").append(name).append(" ");
  }
  EXPECT_EQ(parts, "/foo|bar /foo|bar |foo foo|foo a|a | | | ");
  EXPECT_EQ(VYRAExtractFileAndPath(nullptr), nullptr);
}

TEST_F(Utilities, DataFilesAreOfTwoKindsAndOnlySavingNeedsAPath) {
  gHost.Answer("LoadDataFile", 4);
  gHost.Answer("SaveDataFile", 5);
  RunAs(AddPlugin("a"), [] {
    EXPECT_EQ(VYRALoadDataFile(1, nullptr), 4);
    EXPECT_EQ(VYRASaveDataFile(2, "f"), 5);
    EXPECT_EQ(VYRALoadDataFile(3, nullptr), 0);
    EXPECT_EQ(VYRASaveDataFile(0, "f"), 0);
    EXPECT_EQ(VYRASaveDataFile(3, nullptr), 0);
  });
  EXPECT_EQ(gHost.calls, (Lines{"LoadDataFile(1|null)", "SaveDataFile(2|f)"}));
  EXPECT_EQ(errors, (Lines{"1: Illegal file type passed to VYRALoadDataFile.",
                           "1: Illegal file type passed to VYRASaveDataFile.",
                           "1: Null file path passed to VYRASaveDataFile."}));
}

// A folder with the names a, bb and ccc, in whichever order the system lists them.
class FolderListing : public PluginFixture {
 protected:
  FolderListing() {
    for (const auto& file : all) std::ofstream(folder + file) << "text";
  }
  ~FolderListing() override { std::filesystem::remove_all(folder); }

  // Lists into buffers of exactly these sizes, so that a byte too many is an error of the sanitizer.
  std::string List(int first, int bytes, int slots) {
    buffer = std::vector<char>(static_cast<std::size_t>(bytes), '#');
    indices = std::vector<char*>(static_cast<std::size_t>(slots), unused);
    const int complete = VYRAGetDirectoryContents(folder.c_str(), first, buffer.data(), bytes, indices.data(),
                                                  slots, &total, &returned);
    return std::to_string(returned) + "/" + std::to_string(total) + (complete != 0 ? " complete" : "");
  }

  static inline char unused[] = "unused";
  const std::set<std::string> all = {"a", "bb", "ccc"};
  char folderName[26] = "/tmp/vyra-listing-XXXXXX";
  const std::string folder = std::string(mkdtemp(folderName)) + "/";
  std::vector<char> buffer;
  std::vector<char*> indices;
  int total = -1;
  int returned = -1;
};

TEST_F(FolderListing, IsCompleteOnlyWhenBothEndsFindRoom) {
  EXPECT_EQ(List(0, 10, 4), "3/3 complete");
  EXPECT_EQ(indices[3], nullptr);
  EXPECT_EQ(buffer[9], '\0');
  EXPECT_EQ(std::set<std::string>(indices.begin(), indices.end() - 1), all);
  EXPECT_EQ(List(0, 9, 10), "3/3");
  EXPECT_EQ(List(0, 20, 3), "3/3");
  EXPECT_EQ(List(0, 20, 2), "2/3");
  EXPECT_EQ(List(0, 10, 0), "3/3 complete");
  EXPECT_EQ(List(0, 0, 4), "0/3");
}

TEST_F(FolderListing, PagesThroughTheFolder) {
  std::set<std::string> names;
  for (int first = 0; first < 3; first += returned) {
    List(first, 5, 2);
    ASSERT_GT(returned, 0);
    names.insert(indices.begin(), indices.begin() + returned);
  }
  EXPECT_EQ(names, all);
  EXPECT_EQ(List(3, 1, 1), "0/3 complete") << "past the end an empty list is closed";
  EXPECT_EQ(List(1000, 0, 0), "0/3");
  EXPECT_EQ(List(-7, 10, 4), "3/3 complete") << "a negative start is the beginning";
}

TEST_F(FolderListing, TakesUnreadableFoldersAsEmptyAndNegativeSizesAsNone) {
  char byte = '#';
  char* slot = unused;
  EXPECT_EQ(VYRAGetDirectoryContents(nullptr, 0, &byte, -1, nullptr, -1, nullptr, nullptr), 0);
  EXPECT_EQ(VYRAGetDirectoryContents(folder.c_str(), 3, &byte, 1, &slot, -1, &total, &returned), 0);
  EXPECT_EQ(byte, '#') << "an end that does not fit in both lists is begun in none";
  EXPECT_EQ(slot, unused);
  EXPECT_EQ(VYRAGetDirectoryContents("/no/such", 0, &byte, 1, nullptr, 0, &total, &returned), 1);
  EXPECT_EQ(std::tuple(byte, total), std::tuple('\0', 0)) << "an empty list that is closed";
}

}  // namespace
