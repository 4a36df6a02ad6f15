#include "HostedLibrary.h"

#include <VYRAPlugin.h>
#include <fmt/core.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "worker/Worker.h"

namespace bench {

int gLastHostItem = 0;
std::filesystem::path gAircraftFolder;

namespace {

int gMenus = 0;
int gProbes = 0;
std::uintptr_t gObjects = 0;

[[noreturn]] void Fail(const std::string& message) {
  fmt::print(stderr, "vyra-bench: {}\n", message);
  std::exit(1);
}

void NotProvided() { Fail("the library asked for a service that this host does not provide"); }

// The library takes the aircraft's folder from the path of a model in it.
void AircraftModel(int index, char* path, char* fileName) {
  if (index != 0 || gAircraftFolder.empty()) return;
  std::strcpy(path, (gAircraftFolder / "model.acf").c_str());
  std::strcpy(fileName, "model.acf");
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "vyra-bench-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) Fail("no temporary folder can be made");
  path = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

std::vector<std::filesystem::path> CopyWorkers(const std::filesystem::path& folder, std::size_t count) {
  std::vector<std::filesystem::path> modules;
  for (std::size_t i = 0; i < count; ++i) {
    const std::filesystem::path place = folder / fmt::format("worker_{:03}", i) / "64";
    std::filesystem::create_directories(place);
    std::filesystem::copy_file(BENCH_WORKER_MODULE, place / "lin.vyp");
    modules.push_back(place / "lin.vyp");
  }
  return modules;
}

VYRAHostServices MakeServices() {
  VYRAHostServices services;
  void (*const notProvided)() = NotProvided;
  for (std::size_t offset = offsetof(VYRAHostServices, GetScreenSize); offset < sizeof services;
       offset += sizeof notProvided) {
    std::memcpy(reinterpret_cast<char*>(&services) + offset, &notProvided, sizeof notProvided);
  }
  services.serviceTableRevision = 4;
  services.hostVersion = 1000;
  services.DebugString = [](const char*) {};
  services.GetElapsedTime = [] { return 0.0F; };
  services.CreateMenu = [](int, int, const char*) { return ++gMenus; };
  services.AppendMenuItem = [](int, int, const char*, int) { return ++gLastHostItem; };
  services.SetMenuItemName = [](int, int, const char*, int) {};
  services.RemoveMenuItem = [](int, int) {};
  services.DestroyMenu = [](int) {};
  services.CommandBegin = [](VYRACommandRef) {};
  services.CommandEnd = [](VYRACommandRef) {};
  services.CreateProbe = [] { return ++gProbes; };
  services.ProbeTerrainXYZ = [](int, const float*, float*, float*, float*, int*) { return 1; };
  services.LoadObject = [](const char*) { return reinterpret_cast<VYRAObjectRef>(++gObjects); };
  services.DrawObjects = [](VYRAObjectRef, int, int, float, float, float, float, float, float) {};
  services.UnloadObject = [](VYRAObjectRef) {};
  services.ShowLoadingStatus = [](const char*) {};
  services.HostReceiveMessage = [](VYRAPluginID, int, void*) {};
  services.GetNthAircraftModel = AircraftModel;
  return services;
}

RunningLibrary::RunningLibrary(const std::filesystem::path& systemFolder) {
  VYRAInitializePlugins((systemFolder.string() + "/").c_str(), &services, nullptr);
}

RunningLibrary::~RunningLibrary() { VYRAShutdownPlugins(); }

HostedLibrary::HostedLibrary(std::size_t workers)
    : count(static_cast<VYRAPluginID>(workers)),
      modules(CopyWorkers(folder.Path() / "Resources/plugins", workers)),
      library(folder.Path()) {
  if (VYRACountPlugins() != count + 1) Fail("not every worker plugin started");
}

void HostedLibrary::RunAs(VYRAPluginID plugin, const std::function<void()>& job) {
  WorkerJob message{[](void* context) { (*static_cast<const std::function<void()>*>(context))(); },
                    const_cast<std::function<void()>*>(&job)};
  VYRASendMessageToPlugin(plugin, kMessageRunJob, &message);
}

Loop HostedLibrary::As(VYRAPluginID plugin, Loop loop) {
  return [plugin, loop = std::move(loop)](benchmark::State& state) { RunAs(plugin, [&] { loop(state); }); };
}

void HostedLibrary::Share(std::size_t size, const std::function<void(std::size_t)>& job) const {
  const auto plugins = static_cast<std::size_t>(count);
  for (std::size_t plugin = 0; plugin < plugins; ++plugin) {
    RunAs(static_cast<VYRAPluginID>(plugin + 1), [&] {
      for (std::size_t i = plugin * size / plugins; i < (plugin + 1) * size / plugins; ++i) job(i);
    });
  }
}

}  // namespace bench
