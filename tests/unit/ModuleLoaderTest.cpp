// Opening modules, listing folders by pattern, and thread-specific storage.
#include "VYRAModuleLoader.h"

#include <elf.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "RecordingHost.h"
#include "VYRAHostServices.h"
#include "VYRAModuleLoaderFile.h"

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

TEST_F(ModuleLoader, FilesAreLookedAtForWhatTheSystemsLoaderDoesNotSurvive) {
  const auto look = [&](const char* name) { return VYRALookAtModuleFile((folder / name).c_str()); };
  EXPECT_FALSE(look("missing").isReadable);
  fs::create_directory(folder / "directory");
  Touch("text");
  Touch("empty");
  fs::resize_file(folder / "empty", 0);
  fs::copy_file("/proc/self/exe", folder / "whole");
  fs::copy_file("/proc/self/exe", folder / "header");
  fs::resize_file(folder / "header", 64);
  for (const char* name : {"directory", "text", "empty", "whole", "header"}) {
    EXPECT_TRUE(look(name).isReadable) << name;
    EXPECT_EQ(look(name).danger, "") << name;
  }
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(look("pipe").danger, (folder / "pipe").string() + ": not a regular file");
  fs::copy_file("/proc/self/exe", folder / "cut");
  fs::resize_file(folder / "cut", 8192);  // within the first segments, whatever debug information follows
  EXPECT_EQ(look("cut").danger, (folder / "cut").string() + ": file too short for its segments");
  fs::create_symlink(folder / "whole", folder / "link");
  EXPECT_EQ(look("link").identity, look("whole").identity);
  EXPECT_NE(look("header").identity, look("whole").identity);
}

TEST_F(ModuleLoader, ListOfSegmentsMayStandAnywhereInTheFile) {
  Elf64_Ehdr header = {};
  std::memcpy(header.e_ident, ELFMAG, SELFMAG);
  header.e_ident[EI_CLASS] = ELFCLASS64;
  header.e_phentsize = sizeof(Elf64_Phdr);
  header.e_phnum = 2;
  Elf64_Phdr segments[2] = {};
  segments[1].p_type = PT_LOAD;
  struct {
    const char* name;
    Elf64_Off list, offset;
    Elf64_Xword size;
    Elf64_Addr address;
    bool isDangerous;
  } const cases[] = {
      {"whole", 5000, 0, 6000, 0, false},
      {"one byte more", 5000, 0, 6001, 0, true},
      {"a sum that wraps around", 64, 8, ~Elf64_Xword{0}, 0, true},
      {"beyond the end", 64, 1 << 20, 1, 0, true},
      {"nothing from the file", 64, 1 << 20, 0, 4096, false},
      {"a page of the file nevertheless", 64, 1 << 20, 0, 4097, true},
      {"a list beyond the end", 5990, 1 << 20, 1, 0, false},
      {"a list nowhere", ~Elf64_Off{0} - 8, 1 << 20, 1, 0, false},
  };
  for (const auto& one : cases) {
    header.e_phoff = one.list;
    segments[1].p_offset = one.offset;
    segments[1].p_filesz = one.size;
    segments[1].p_vaddr = one.address;
    std::string bytes(6000, '\0');
    std::memcpy(bytes.data(), &header, sizeof(header));
    if (one.list < 5500) std::memcpy(bytes.data() + one.list, segments, sizeof(segments));
    std::ofstream(folder / "file") << bytes;
    EXPECT_EQ(!VYRALookAtModuleFile((folder / "file").c_str()).danger.empty(), one.isDangerous) << one.name;
  }
}

TEST_F(ModuleLoader, MissingSymbolIsLoggedOnlyWhenAskedFor) {
  void* const libc = VYRALoadDLL("/lib/x86_64-linux-gnu/libc.so.6").handle;
  ASSERT_NE(libc, nullptr);
  EXPECT_NE(VYRAFindSymbol(libc, "strlen", 1), nullptr);
  EXPECT_EQ(VYRAFindSymbol(libc, "no_such_function", 0), nullptr);
  EXPECT_EQ(VYRAFindSymbol(nullptr, "strlen", 1), nullptr);
  EXPECT_EQ(gHost.log, "");
  EXPECT_EQ(VYRAFindSymbol(libc, "no_such_function", 1), nullptr);
  EXPECT_TRUE(gHost.log.starts_with("dlerror:")) << gHost.log;
  EXPECT_TRUE(gHost.log.ends_with("\n")) << gHost.log;
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
