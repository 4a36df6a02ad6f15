#include "Folders.h"

#include <dlfcn.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

namespace fs = std::filesystem;

namespace calls {

Folders gFolders;

namespace {

// Makes room for a file, and returns where it is to be.
fs::path At(const fs::path& path) {
  fs::create_directories(path.parent_path());
  return path;
}

}  // namespace

Folders::Folders() : maker(getpid()) {
  std::string pattern = (fs::temp_directory_path() / "vyra-fuzz-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) std::abort();
  root = pattern + "/";
  const fs::path plugins = root + "many/Resources/plugins";
  for (const char* name :
       {"one.vyp", "two.vyp", "PluginAdmin/64/lin.vyp", "three/64/lin.vyp", "three/lin.vyp"}) {
    fs::copy_file(FUZZ_MODULE, At(plugins / name));
  }
  fs::copy_file(FUZZ_RESIDENT_MODULE, At(plugins / "resident.vyp"));
  fs::create_symlink(plugins / "one.vyp", At(plugins / "linked.vyp"));
  fs::create_hard_link(plugins / "two.vyp", At(plugins / "hard/lin.vyp"));
  std::ofstream(plugins / "text.vyp") << "This is no library.\n";
  const fs::path aircraft = root + "many/Aircraft/plugins";
  fs::copy_file(FUZZ_MODULE, At(aircraft / "flaps/lin.vyp"));
  fs::create_symlink(plugins / "three/64/lin.vyp", At(aircraft / "again/64/lin.vyp"));
  const fs::path scenery = root + "many/Scenery/plugins";
  fs::copy_file(FUZZ_MODULE, At(scenery / "hill/lin.vyp"));
  fs::create_symlink(aircraft / "flaps/lin.vyp", At(scenery / "again/lin.vyp"));
  const fs::path few = root + "few/Resources/plugins";
  for (const char* name : {"one.vyp", "two/lin.vyp"}) fs::copy_file(FUZZ_MODULE, At(few / name));
}

Folders::~Folders() {
  if (getpid() != maker) return;  // a child of the process that made them
  std::error_code ignored;
  fs::remove_all(root, ignored);
}

namespace {

// In the order in which they are loaded.
constexpr const char* kFiles[] = {"Resources/plugins/PluginAdmin/64/lin.vyp",
                                  "Resources/plugins/linked.vyp",
                                  "Resources/plugins/one.vyp",
                                  "Resources/plugins/resident.vyp",
                                  "Resources/plugins/two.vyp",
                                  "Resources/plugins/hard/lin.vyp",
                                  "Resources/plugins/two/lin.vyp",
                                  "Resources/plugins/three/64/lin.vyp",
                                  "Resources/plugins/three/lin.vyp",
                                  "Aircraft/plugins/again/64/lin.vyp",
                                  "Aircraft/plugins/flaps/lin.vyp",
                                  "Scenery/plugins/again/lin.vyp",
                                  "Scenery/plugins/hill/lin.vyp"};

}  // namespace

int Folders::PlaceOf(const void* module) {
  Dl_info info = {};
  if (dladdr(module, &info) == 0) return -1;
  const auto* const file = std::find_if(std::begin(kFiles), std::end(kFiles), [&](const char* name) {
    return std::string_view(info.dli_fname).ends_with(name);
  });
  return file != std::end(kFiles) ? static_cast<int>(file - kFiles) : -1;
}

bool Folders::IsOfAircraft(int place) { return place == 10 || place == 11; }

}  // namespace calls
