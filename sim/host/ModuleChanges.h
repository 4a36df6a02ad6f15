// Notices when the file of a plugin module changed, as when its author built it anew.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace sim {

class ModuleChanges {
 public:
  // Throws std::system_error where the system cannot watch files.
  ModuleChanges();
  ~ModuleChanges();
  ModuleChanges(const ModuleChanges&) = delete;
  ModuleChanges& operator=(const ModuleChanges&) = delete;

  // Watches these modules as well, and the files that they are links to. A file that is not there yet, or not
  // any more, is noticed as soon as it is.
  void Watch(const std::vector<std::string>& modules);

  // Those that were written and closed, or put in place, since this was asked last; each once.
  std::vector<std::string> Take();

 private:
  void WatchFile(const std::string& file, const std::string& module);

  int notifications;
  // By folder, and by the name in it.
  std::map<int, std::map<std::string, std::string>> watched;
};

}  // namespace sim
