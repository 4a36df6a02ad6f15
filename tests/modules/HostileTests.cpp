// Modules that are broken or mean harm, one fault each, between two good ones. Whatever the fault, the world
// after it is the same.
#include <dlfcn.h>
#include <elf.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <vector>

#include "HostileFiles.h"
#include "ModuleTest.h"
#include "Round.h"

namespace fs = std::filesystem;

namespace {

// What the log says of a module.
enum class Log { loaded, refused, taken, noStart, unreadable, dangerous, notALibrary, nothing };

struct Hostile {
  std::string name;  // and its file's, without the ending
  Log log = Log::loaded;
  const char* detail = "";              // the signature that is taken, or why it is dangerous
  const char* module = HOSTILE_MODULE;  // what is copied, when it is one
  MakeFile_f make = nullptr;            // or else this makes the file

  friend void PrintTo(const Hostile& hostile, std::ostream* out) { *out << hostile.name; }
};

// ---- The table -------------------------------------------------------------------------------------------

std::vector<Hostile> Files() {
  const char* const noFile = nullptr;
  return {
      {"empty", Log::notALibrary, "", noFile, MakeEmpty},
      {"text", Log::notALibrary, "", noFile, MakeText},
      {"folder", Log::notALibrary, "", noFile, MakeFolder},
      {"dangling-link", Log::unreadable, "", noFile, MakeDanglingLink},
      {"link-to-itself", Log::unreadable, "", noFile, MakeLinkToItself},
      {"link-to-a-device", Log::dangerous, "not a regular file", noFile, MakeLinkToADevice},
      {"link-to-the-first", Log::taken, "test.0-first", noFile, MakeLinkToTheFirst},
      {"hard-link-to-the-first", Log::taken, "test.0-first", noFile, MakeHardLinkToTheFirst},
      {"pipe", Log::dangerous, "not a regular file", noFile, MakePipe},
      {"socket", Log::unreadable, "", noFile, MakeSocket},
      {"unreadable", Log::unreadable, "", noFile, MakeUnreadable},
      {"other-processor", Log::notALibrary, "", noFile, MakeForOtherProcessor},
      {"other-word-size", Log::notALibrary, "", noFile, MakeForOtherWordSize},
      {"other-byte-order", Log::notALibrary, "", noFile, MakeForOtherByteOrder},
      {"header-alone", Log::notALibrary, "", noFile, MakeHeaderAlone},
      {"beginning-alone", Log::dangerous, "file too short for its segments", noFile, MakeBeginningAlone},
      {"executable", Log::notALibrary, "", noFile, MakeExecutable},
      {"thousands-of-entries", Log::nothing, "", noFile, MakeThousandsOfEntries},
      {"no start", Log::noStart, "", STARTLESS_MODULE},
      {"undefined-symbol", Log::notALibrary, "", UNDEFINED_MODULE},
      {"missing-library", Log::notALibrary, "", ORPHANED_MODULE},
      {"replaced-symbols", Log::loaded, "", REPLACING_MODULE},
      {"another-library", Log::loaded, "", DOUBLED_MODULE},
      {"a name with spaces", Log::loaded, "", EVERYTHING_MODULE},
      {"m\xC3\xB6\xE2\x82\xAC\xF0\x9F\x9B\xA9", Log::loaded, "", EVERYTHING_MODULE},
      {"line\nend\n", Log::loaded, "", EVERYTHING_MODULE},
      {std::string(251, 'm'), Log::loaded, "", EVERYTHING_MODULE},  // 255 bytes with the ending
  };
}

std::vector<Hostile> Behaviours() {
  std::vector<Hostile> rows = {
      {"start-refuses", Log::refused},
      {"start-fills-nothing", Log::taken, ""},
      {"start-leaves-signature-empty", Log::taken, ""},
      {"start-takes-a-signature", Log::taken, "test.0-first"},
  };
  for (const char* name : {"constructor-registers",
                           "constructor-misuses",
                           "destructor-registers",
                           "destructor-misuses",
                           "start-fills-to-the-brim",
                           "start-enables-itself",
                           "enable-refuses",
                           "enable-disables-itself",
                           "enable-takes-planes-and-camera",
                           "enable-registers-thousands",
                           "disable-unregisters",
                           "disable-enables-itself",
                           "stop-registers",
                           "stop-enables-itself",
                           "error-misuses",
                           "loop-misuses",
                           "loop-disables-itself",
                           "loop-unregisters",
                           "loop-registers",
                           "loop-reloads",
                           "draw-unregisters",
                           "draw-registers",
                           "draw-reloads",
                           "window-unregisters",
                           "changed-unregisters",
                           "command-unregisters"}) {
    rows.push_back({name});
  }
  return rows;
}

std::vector<Hostile> Throwers() {
  std::vector<Hostile> rows;
  for (const std::string call : kCallNames) {
    if (call == "destroy") continue;  // no destructor may throw
    const bool isAtStart = call == "construct" || call == "start";
    for (const char* often : {"-once", "-always"}) {
      rows.push_back({"throws-" + call + often, isAtStart ? Log::nothing : Log::loaded});
    }
  }
  return rows;
}

// A name that GoogleTest takes.
std::string TestName(const testing::TestParamInfo<Hostile>& info) {
  std::string name = info.param.name.substr(0, 40);
  for (char& letter : name) {
    if (std::isalnum(static_cast<unsigned char>(letter)) == 0) letter = '_';
  }
  return name;
}

// ---- The world around it -------------------------------------------------------------------------------

std::size_t CountDescriptors() {
  const fs::directory_iterator begin("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin, fs::directory_iterator()));
}

class HostileModule : public ModuleTest, public testing::WithParamInterface<Hostile> {
 protected:
  HostileModule() {
    PrepareHostForRounds();
    for (const std::string& folder : {root, root + "Resources", main}) {
      fs::permissions(folder, fs::perms::all);
    }
    reloads = VYRARegisterDataAccessor(
        "test/reloads", VYRA_TYPE_INT, 1, [](void* count) { return *static_cast<int*>(count); },
        [](void* count, int value) { *static_cast<int*>(count) = value; }, nullptr, nullptr, nullptr, nullptr,
        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &reloadCount, &reloadCount);
    for (const std::string& good : neighbours) {
      fs::permissions(Add(good, EVERYTHING_MODULE), fs::perms::all);
    }
  }
  ~HostileModule() override { VYRAUnregisterDataAccessor(reloads); }

  void MakeHostile() {
    if (GetParam().make != nullptr) {
      GetParam().make(hostile);
    } else {
      Add(hostile, GetParam().module);
    }
  }

  // Whether no exception came.
  template <class Call>
  bool Try(Call call) {
    try {
      call();
      return true;
    } catch (const std::exception&) {
      ++exceptions;
      return false;
    }
  }

  // Calls until no exception comes any more, as hosts do.
  template <class Call>
  void Insist(Call call) {
    int tries = 0;
    while (!Try(call)) ASSERT_LT(++tries, 100) << "There is no end of exceptions.";
  }

  std::string LogOfHostile() const;
  std::string LogOfStart(const std::string& ofHostile) const;
  void ExpectNeighboursUnharmed();
  void ExpectNothingLeft() const;

  int exceptions = 0;
  const std::string hostile = main + GetParam().name + ".vyp";
  const std::string neighbours[2] = {main + "0-first.vyp", main + "z-last.vyp"};

 private:
  int reloadCount = 0;
  VYRADataRef reloads = nullptr;
};

std::string HostileModule::LogOfHostile() const {
  const std::string name = GetParam().name;
  const std::string detail = GetParam().detail;
  std::string unloadable =
      "Failed: " + hostile +
      ".  (This file is missing, not a DLL or could not be loaded due to another missing DLL.)\n\n";
  switch (GetParam().log) {
    case Log::loaded: {
      const std::string itsOwn = "test." + name.substr(0, 63);
      const std::string signature = name == "start-fills-to-the-brim" ? std::string(256, 's') : itsOwn;
      return "Loaded: " + hostile + " (" + signature + ").\n\n";
    }
    case Log::refused:
      return "Failed: " + hostile + ". (The plugin refused to start by returning 0 from VyPluginStart.)\n\n";
    case Log::taken:
      return "Warning: " + hostile + " Signature: " + detail +
             ". (A version of this plugin is already loaded.)\n";
    case Log::noStart:
      return "dlerror:" + hostile + ": undefined symbol: VyPluginStart\nFailed: " + hostile +
             ".  (This file is a loadable DLL but is missing the VyPluginStart callback.)\n\n";
    case Log::unreadable:
      return unloadable;
    case Log::dangerous:
      return "dlerror:" + hostile + ": " + detail + "\n" + unloadable;
    case Log::notALibrary:
      EXPECT_EQ(dlopen(hostile.c_str(), RTLD_NOW), nullptr);
      return "dlerror:" + std::string(dlerror()) + "\n" + unloadable;
    case Log::nothing:
      break;
  }
  return "";
}

std::string HostileModule::LogOfStart(const std::string& ofHostile) const {
  return "Fetching plugins for " + root + "Resources/plugins\n\nLoaded: " + neighbours[0] +
         " (test.0-first).\n\n" + ofHostile + "Loaded: " + neighbours[1] + " (test.z-last).\n\n";
}

// Without the hostile one, each of their registrations is called once in a round.
void HostileModule::ExpectNeighboursUnharmed() {
  std::vector<VYRAPluginID> good;
  for (const std::string& path : neighbours) good.push_back(VYRAFindPluginByPath(path.c_str()));
  exceptions += FlyRound(1);
  exceptions += FlyRound(2);
  for (VYRAPluginID plugin = 1; plugin < VYRACountPlugins(); ++plugin) {
    if (std::ranges::find(good, plugin) == good.end()) Insist([&] { VYRADisablePlugin(plugin); });
  }
  FlyRound(3);
  for (const VYRAPluginID plugin : good) TallyOf(plugin);
  EXPECT_EQ(VYRAGetMyID(), VYRA_HOST_PLUGIN);
  FlyRound(4);
  for (const VYRAPluginID plugin : good) {
    ASSERT_EQ(VYRAIsPluginEnabled(plugin), 1);
    const Tally tally = TallyOf(plugin);
    for (std::size_t call = kFirstCallOfARound; call < tally.size(); ++call) {
      EXPECT_EQ(tally[call], 1) << kCallNames[call] << " of " << InfoOf(plugin);
    }
  }
}

void HostileModule::ExpectNothingLeft() const {
  EXPECT_EQ(VYRACountPlugins(), 0);
  EXPECT_FALSE(AnybodyAnswers(5));
  EXPECT_EQ(gBooks.objectsOut, 0);
  EXPECT_EQ(gBooks.commandsOut, 0);
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    EXPECT_EQ(line.find(root), std::string::npos) << line;
    EXPECT_EQ(line.find("another-copy"), std::string::npos) << line;
  }
}

// ---- The test ------------------------------------------------------------------------------------------

TEST_P(HostileModule, LeavesHostNeighboursAndTheNextStartUnharmed) {
  MakeHostile();
  std::optional<StOrdinaryUser> ordinary;
  if (GetParam().make == MakeUnreadable && !ordinary.emplace().IsOrdinary()) {
    GTEST_SKIP() << "Nothing is unreadable to root, who cannot become anybody else here.";
  }
  const std::string expected = LogOfStart(LogOfHostile());
  const std::size_t descriptors = CountDescriptors();

  Try([&] { Start(); });
  EXPECT_EQ(gHost.log, expected);
  ExpectNeighboursUnharmed();

  gHost.log.clear();
  VYRAReloadPlugins();
  Insist(Pass);
  EXPECT_EQ(gHost.log, expected) << "in a reload";
  ExpectNeighboursUnharmed();

  Insist(VYRAShutdownPlugins);
  ExpectNothingLeft();
  EXPECT_EQ(CountDescriptors(), descriptors);
  EXPECT_EQ(exceptions > 0, GetParam().name.starts_with("throws-"));

  ordinary.reset();
  fs::remove_all(hostile);
  gHost.log.clear();
  Start();
  EXPECT_EQ(gHost.log, LogOfStart("")) << "without it";
  ExpectNeighboursUnharmed();
}

INSTANTIATE_TEST_SUITE_P(Files, HostileModule, testing::ValuesIn(Files()), TestName);
INSTANTIATE_TEST_SUITE_P(Behaviours, HostileModule, testing::ValuesIn(Behaviours()), TestName);
INSTANTIATE_TEST_SUITE_P(Throwers, HostileModule, testing::ValuesIn(Throwers()), TestName);

// ---- Libraries that were cut short -----------------------------------------------------------------------

class Truncated : public ModuleTest {
 protected:
  // Starts in a child process: the number of plugins, or -1 for one that a signal ended.
  int CountPluginsOfAChild() {
    const pid_t child = fork();
    if (child == 0) {
      Start();
      _exit(VYRACountPlugins() - 1);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  static std::vector<std::uintmax_t> Lengths(const std::string& path);
};

// Around the ends of the headers and segments, where something changes, and in between.
std::vector<std::uintmax_t> Truncated::Lengths(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  Elf64_Ehdr header;
  file.read(reinterpret_cast<char*>(&header), sizeof(header));
  std::vector<Elf64_Phdr> segments(header.e_phnum);
  file.seekg(static_cast<std::streamoff>(header.e_phoff));
  file.read(reinterpret_cast<char*>(segments.data()),
            static_cast<std::streamsize>(segments.size() * sizeof(Elf64_Phdr)));
  std::vector<std::uintmax_t> ends = {1, EI_NIDENT, sizeof(header),
                                      header.e_phoff + segments.size() * sizeof(Elf64_Phdr)};
  for (const Elf64_Phdr& segment : segments) {
    ends.push_back(segment.p_offset);
    ends.push_back(segment.p_offset + segment.p_filesz);
  }
  std::vector<std::uintmax_t> lengths;
  const std::uintmax_t size = fs::file_size(path);
  for (const std::uintmax_t end : ends) {
    for (const std::uintmax_t length : {end - 1, end, end + 1}) {
      if (length < size) lengths.push_back(length);
    }
  }
  for (std::uintmax_t length = 0; length < size; length += size / 60) lengths.push_back(length);
  return lengths;
}

TEST_F(Truncated, LibraryOfNoLengthEndsTheHost) {
  const std::string whole = Add(root + "whole", EVERYTHING_MODULE);
  const std::string cut = Add(main + "cut.vyp", EVERYTHING_MODULE);
  Add(main + "good.vyp", BARE_MODULE);
  int loaded = 0;
  int failed = 0;
  for (const std::uintmax_t length : Lengths(whole)) {
    fs::copy_file(whole, cut, fs::copy_options::overwrite_existing);
    fs::resize_file(cut, length);
    const int plugins = CountPluginsOfAChild();
    EXPECT_TRUE(plugins == 1 || plugins == 2) << plugins << " with " << length << " bytes";
    ++(plugins == 2 ? loaded : failed);
  }
  EXPECT_GT(failed, 50);
  EXPECT_GT(loaded, 0) << "What no segment needs may be missing.";
}

}  // namespace
