// Paths, folder listings, data files, keys, held buttons and versions.
#include "VYRAUtilities.h"

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "Forwarding.h"
#include "PluginFixture.h"
#include "VYRAUtilitiesKeys.h"

namespace {

namespace fs = std::filesystem;

class Utilities : public PluginFixture {
 protected:
  Utilities() {
    gHost.services.CommandButtonPress = [](const int* buttons, int up, int pass) {
      std::string line = up != 0 ? "up" : "down";
      line += std::to_string(pass) + ":";
      for (; *buttons != 0; ++buttons) line += " " + std::to_string(*buttons);
      trace.push_back(line);
    };
  }

  static Lines Repeat() {
    trace.clear();
    VYRADoRepeatedButtons();
    return trace;
  }

  // What a path becomes when it is split: "folder|name".
  static std::string Split(std::string path) {
    const char* const name = VYRAExtractFileAndPath(path.data());
    return std::string(path.c_str()) + "|" + name;
  }
};

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
  EXPECT_EQ(Repeat(), Lines()) << "nothing is held, so the host is not called";
  VYRACommandButtonPress(5);
  VYRACommandButtonPress(3);
  VYRACommandButtonPress(5);
  VYRACommandButtonRelease(5);
  VYRACommandButtonRelease(9);
  EXPECT_EQ(trace, (Lines{"down0: 5", "down1: 5", "down0: 3", "down1: 3", "down0: 5", "down1: 5", "up0: 5",
                          "up1: 5", "up0: 9", "up1: 9"}));
  VYRACommandButtonPress(0);
  EXPECT_EQ(Repeat(), Lines{"down1: 3 5"}) << "0 would end the list early";
  VYRACommandButtonRelease(3);
  VYRACommandButtonRelease(5);
  EXPECT_EQ(Repeat(), Lines());
}

TEST_F(Utilities, ListOfHeldButtonsStaysWhileTheHostsCallChangesIt) {
  VYRACommandButtonPress(1);
  VYRACommandButtonPress(2);
  gHost.services.CommandButtonPress = [](const int* buttons, int, int) {
    if (buttons[0] == 7) return;
    for (int i = 0; i < 100; ++i) VYRACommandButtonPress(7);
    EXPECT_EQ(buttons[0] * 100 + buttons[1] * 10 + buttons[2], 120);
  };
  VYRADoRepeatedButtons();
  EXPECT_EQ(gButtons.size(), 102U);
}

TEST_F(Utilities, KeysHaveTheirNames) {
  const auto name = [](int key) { return std::string(VYRAGetVirtualKeyDescription(static_cast<char>(key))); };
  EXPECT_EQ(name(0x08) + name(0x2F) + name(0x39) + name(0x5A) + name(0x69), "BackspaceHelp9ZNumpad-9");
  EXPECT_EQ(name(0x6D) + name(0x87) + name(0xB2) + name(0xB3) + name(0xB6), "Numpad--F24][\\");
  EXPECT_EQ(name(0xBA) + name(0xBD) + name(0x141), "`Numpad-=A");
  int unnamed = 0;
  for (int key = 0; key < 256; ++key) unnamed += name(key) == "Unknown" ? 1 : 0;
  EXPECT_EQ(unnamed, 256 - 110);
}

TEST_F(Utilities, VersionsGoWhereTheyBelong) {
  gHost.services.GetVersions = [](int* outHostVersion, int* outHostId) {
    *outHostVersion = 900;
    *outHostId = 3;
  };
  int host = 0;
  int library = 0;
  int id = 0;
  VYRAGetVersions(&host, &library, &id);
  VYRAGetVersions(nullptr, nullptr, nullptr);
  EXPECT_EQ(host * 10000 + library * 10 + id, 9002103);
}

TEST_F(Utilities, PathsOfTheHostAreCutOnlyForCallersWithoutNativePaths) {
  gHost.services.GetSystemPath = [](char* outPath) { std::strcpy(outPath, std::string(600, 'x').c_str()); };
  gHost.services.GetPrefsPath = gHost.services.GetSystemPath;
  for (const auto get : {VYRAGetSystemPath, VYRAGetPrefsPath}) {
    get(nullptr);
    RunAs(AddPlugin("a"), [&] {
      char path[1024];
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
  for (const char* path : {"/foo/bar", "/foo/bar/", "/foo", "foo", "a/", "/", "//", ""}) {
    parts += Split(path) + " ";
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
class FolderListing : public Utilities {
 protected:
  FolderListing() {
    char name[] = "/tmp/vyra-listing-XXXXXX";
    folder = mkdtemp(name);
    for (const char* file : {"a", "bb", "ccc"}) std::ofstream(folder / file) << "text";
  }
  ~FolderListing() override { fs::remove_all(folder); }

  // Lists into buffers of exactly these sizes, so that a byte too many is an error of the sanitizer.
  int List(int first, int bytes, int slots) {
    buffer = std::vector<char>(static_cast<std::size_t>(bytes), '#');
    indices = std::vector<char*>(static_cast<std::size_t>(slots), unused);
    return VYRAGetDirectoryContents(folder.c_str(), first, bytes != 0 ? buffer.data() : nullptr, bytes,
                                    slots != 0 ? indices.data() : nullptr, slots, &total, &returned);
  }

  static inline char unused[] = "unused";
  fs::path folder;
  std::vector<char> buffer;
  std::vector<char*> indices;
  int total = -1;
  int returned = -1;
};

TEST_F(FolderListing, IsCompleteOnlyWhenBothEndsFindRoom) {
  EXPECT_EQ(List(0, 10, 4), 1);
  EXPECT_EQ(indices[3], nullptr);
  EXPECT_EQ(buffer[9], '\0');
  const std::set<std::string> names(indices.begin(), indices.end() - 1);
  EXPECT_EQ(names, (std::set<std::string>{"a", "bb", "ccc"}));

  struct {
    int bytes, slots, complete, returned;
  } const cases[] = {{9, 10, 0, 3}, {20, 3, 0, 3}, {20, 2, 0, 2}, {10, 0, 1, 3}, {0, 4, 0, 0}};
  for (const auto& one : cases) {
    EXPECT_EQ(List(0, one.bytes, one.slots), one.complete)
        << one.bytes << " bytes, " << one.slots << " slots";
    EXPECT_EQ(returned, one.returned);
    EXPECT_EQ(total, 3);
  }
}

TEST_F(FolderListing, PagesThroughTheFolder) {
  std::set<std::string> names;
  int complete = 0;
  for (int first = 0; complete == 0 && first < 3; first += returned) {
    complete = List(first, 5, 2);
    names.insert(indices.begin(), indices.begin() + returned);
  }
  EXPECT_EQ(names, (std::set<std::string>{"a", "bb", "ccc"}));
  EXPECT_EQ(List(3, 1, 1), 1) << "past the end an empty list is closed";
  EXPECT_EQ(List(1000, 0, 0), 0);
  EXPECT_EQ(List(-7, 10, 4), 1) << "a negative start is the beginning";
}

TEST_F(FolderListing, TakesUnreadableFoldersAsEmptyAndNegativeSizesAsNone) {
  char byte = '#';
  char* slot = unused;
  EXPECT_EQ(VYRAGetDirectoryContents(nullptr, 0, &byte, -1, nullptr, -1, nullptr, nullptr), 0);
  EXPECT_EQ(VYRAGetDirectoryContents(folder.c_str(), 3, &byte, 1, &slot, -1, &total, &returned), 0);
  EXPECT_EQ(byte, '#') << "an end that does not fit in both lists is begun in none";
  EXPECT_EQ(slot, unused);
  EXPECT_EQ(VYRAGetDirectoryContents("/no/such", 0, &byte, 1, nullptr, 0, &total, &returned), 1);
  EXPECT_EQ(byte, '\0');
  EXPECT_EQ(total, 0);
}

}  // namespace
