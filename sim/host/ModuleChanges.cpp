// A file may be replaced by another, so it is its folder that is watched.
#include "host/ModuleChanges.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace sim {

namespace fs = std::filesystem;

ModuleChanges::ModuleChanges() : notifications(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (notifications < 0)
    throw std::system_error(errno, std::generic_category(), "the modules cannot be watched");
}

ModuleChanges::~ModuleChanges() { close(notifications); }

void ModuleChanges::Watch(const std::vector<std::string>& modules) {
  for (const std::string& module : modules) {
    WatchFile(module, module);
    std::error_code error;
    const fs::path file = fs::canonical(module, error);
    if (!error && file != module) WatchFile(file, module);
  }
}

void ModuleChanges::WatchFile(const std::string& file, const std::string& module) {
  const fs::path path = file;
  const int folder =
      inotify_add_watch(notifications, path.parent_path().c_str(), IN_CLOSE_WRITE | IN_MOVED_TO);
  if (folder >= 0) watched[folder][path.filename()] = module;
}

std::vector<std::string> ModuleChanges::Take() {
  std::vector<std::string> changed;
  alignas(inotify_event) std::array<char, 16384> buffer;
  ssize_t size = 0;
  while ((size = read(notifications, buffer.data(), buffer.size())) > 0) {
    inotify_event event{};
    for (const char* place = buffer.data(); place < buffer.data() + size;
         place += sizeof(event) + event.len) {
      std::memcpy(&event, place, sizeof(event));
      if (event.len == 0) continue;
      const std::map<std::string, std::string>& folder = watched[event.wd];
      const auto found = folder.find(place + sizeof(event));
      if (found == folder.end()) continue;
      if (std::ranges::find(changed, found->second) == changed.end()) changed.push_back(found->second);
    }
  }
  return changed;
}

}  // namespace sim
