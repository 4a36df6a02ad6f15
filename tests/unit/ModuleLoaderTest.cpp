// Opening modules, listing folders by pattern, and thread-specific storage.
#include "VYRAModuleLoader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "RecordingHost.h"
#include "VYRAHostServices.h"

namespace {

namespace fs = std::filesystem;

class ModuleLoader : public ::testing::Test {
 protected:
  ModuleLoader() {
    gHooks = &gHost.services;
    char name[] = "/tmp/vyra-module-loader-XXXXXX";
    folder = mkdtemp(name);
  }
  ~ModuleLoader() override { fs::remove_all(folder); }

  void Touch(const char* name) { std::ofstream(folder / name) << "text"; }

  std::string Listing(const char* pattern) {
    std::vector<std::string> names = {"kept"};
    VYRAFetchDirectoryContents(folder.c_str(), pattern, names);
    EXPECT_EQ(names.front(), "kept");
    std::sort(names.begin() + 1, names.end());
    std::string line;
    for (std::size_t i = 1; i < names.size(); ++i) line += names[i] + " ";
    return line;
  }

  fs::path folder;
};

TEST_F(ModuleLoader, MissingFileIsSilentAndAFileThatIsNoLibraryIsLogged) {
  EXPECT_EQ(VYRALoadDLL((folder / "missing.vyp").c_str()), nullptr);
  EXPECT_EQ(gHost.log, "");
  Touch("text.vyp");
  EXPECT_EQ(VYRALoadDLL((folder / "text.vyp").c_str()), nullptr);
  EXPECT_TRUE(gHost.log.starts_with("dlerror:")) << gHost.log;
  EXPECT_TRUE(gHost.log.ends_with("\n"));
}

TEST_F(ModuleLoader, MissingSymbolIsLoggedOnlyWhenAskedFor) {
  void* libc = VYRALoadDLL("/lib/x86_64-linux-gnu/libc.so.6");
  ASSERT_NE(libc, nullptr);
  EXPECT_NE(VYRAFindSymbol(libc, "strlen", 1), nullptr);
  EXPECT_EQ(VYRAFindSymbol(libc, "no_such_function", 0), nullptr);
  EXPECT_EQ(VYRAFindSymbol(nullptr, "strlen", 1), nullptr);
  EXPECT_EQ(gHost.log, "");
  EXPECT_EQ(VYRAFindSymbol(libc, "no_such_function", 1), nullptr);
  EXPECT_TRUE(gHost.log.starts_with("dlerror:")) << gHost.log;
  VYRAUnloadDLL(libc);
}

TEST_F(ModuleLoader, PatternsMatchSuffixesWithoutCase) {
  for (const char* name : {"a.vyp", "B.VYP", ".vyp", "vyp", "c.vyp.txt"}) Touch(name);
  EXPECT_EQ(Listing("*.vyp"), ".vyp B.VYP a.vyp ");
  EXPECT_EQ(Listing("*.*"), ".vyp B.VYP a.vyp c.vyp.txt vyp ");
  EXPECT_EQ(Listing("vyp"), ".vyp B.VYP a.vyp vyp ");
  folder /= "missing";
  EXPECT_EQ(Listing("*.*"), "");
  folder = folder.parent_path();
}

TEST_F(ModuleLoader, FoldersAreListedAndNamesThatEndInDirAsWell) {
  for (const char* name : {"plain", "subDir", "linked"}) fs::create_directory(folder / name);
  Touch("file");
  Touch("fileDIR");
  fs::create_symlink(folder / "plain", folder / "symlink");
  fs::create_symlink(folder / "nowhere", folder / "dangling");
  testing::internal::CaptureStdout();
  EXPECT_EQ(Listing("DIR"), "fileDIR linked plain subDir subDir symlink ");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "name dangling, errno 2\n");
  EXPECT_EQ(Listing("dir"), "fileDIR subDir ") << "only the exact word asks for folders";
  EXPECT_EQ(gHost.log, "");
}

TEST_F(ModuleLoader, ThreadStorageKeepsAValuePerKey) {
  int value = 0;
  const pthread_key_t one = VYRAAllocTLS();
  const pthread_key_t other = VYRAAllocTLS();
  EXPECT_EQ(VYRAGetTLS(one), nullptr);
  VYRASetTLS(one, &value);
  EXPECT_EQ(VYRAGetTLS(one), &value);
  EXPECT_EQ(VYRAGetTLS(other), nullptr);
}

}  // namespace
