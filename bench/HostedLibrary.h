// The host's side of vyra-bench: libVYRA.so.2, started over a folder of worker plugins.
#pragma once

#include <VYRAHost.h>

#include <cstddef>
#include <filesystem>
#include <functional>

#include "Session.h"

namespace bench {

// A temporary folder, removed with everything in it at the end of the scope.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return path; }

 private:
  std::filesystem::path path;
};

// Puts copies of the worker plugin into a folder, as plugin folders; the paths of their modules. Copies,
// because the system knows a file that it has opened already.
std::vector<std::filesystem::path> CopyWorkers(const std::filesystem::path& folder, std::size_t count);

// A service table whose services do nothing or, where no measure needs them, end the program.
VYRAHostServices MakeServices();

// The number that the host gave the menu item that was appended last.
extern int gLastHostItem;

// The folder whose plugins an aircraft brings, as services tell the library; "" for none.
extern std::filesystem::path gAircraftFolder;

// Starts the library over a system folder, and shuts it down at the end of the scope.
class RunningLibrary {
 public:
  explicit RunningLibrary(const std::filesystem::path& systemFolder);
  ~RunningLibrary();
  RunningLibrary(const RunningLibrary&) = delete;
  RunningLibrary& operator=(const RunningLibrary&) = delete;

 private:
  VYRAHostServices services = MakeServices();
};

// The library with workers: plugins 1 to Count().
class HostedLibrary {
 public:
  explicit HostedLibrary(std::size_t workers = kWorkers);

  VYRAPluginID Count() const { return count; }

  // Runs a job on a plugin's behalf, in a call of that plugin's code.
  static void RunAs(VYRAPluginID plugin, const std::function<void()>& job);

  // A loop that runs on a plugin's behalf.
  static Loop As(VYRAPluginID plugin, Loop loop);

  // Runs a job `size` times, divided evenly among the plugins.
  void Share(std::size_t size, const std::function<void(std::size_t index)>& job) const;

 private:
  static constexpr std::size_t kWorkers = 10;

  TemporaryFolder folder;
  VYRAPluginID count;
  std::vector<std::filesystem::path> modules;
  RunningLibrary library;
};

}  // namespace bench
