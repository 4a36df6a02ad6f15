// Modules: the whole life of an aircraft's plugin, and the start-up with many.
#include <VYRAPlugin.h>
#include <dlfcn.h>

#include "../HostedLibrary.h"
#include "../Peers.h"
#include "Measures.h"

namespace bench {

namespace {

using Modules = std::vector<std::filesystem::path>;

// The least that opening a plugin takes: its module, and its five callbacks.
void* BareOpen(const std::filesystem::path& path) {
  void* module = dlopen(path.c_str(), RTLD_NOW);
  for (const char* name : kModuleCallbacks) benchmark::DoNotOptimize(dlsym(module, name));
  return module;
}

// All are open together before they are closed, as an aircraft's plugins are.
Loop BareCycle(const Modules& modules) {
  return [&modules](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
      std::vector<void*> open;
      for (const std::filesystem::path& path : modules) open.push_back(BareOpen(path));
      for (void* module : open) dlclose(module);
    }
  };
}

// Opening alone; the modules are closed again while the clock stands.
Loop BareStartUp(const Modules& modules) {
  return [&modules](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
      std::vector<void*> open;
      for (const std::filesystem::path& path : modules) open.push_back(BareOpen(path));
      state.PauseTiming();
      for (void* module : open) dlclose(module);
      state.ResumeTiming();
    }
  };
}

}  // namespace

void MeasureModuleCycle(Session& session) {
  constexpr std::size_t kModules = 10;  // of one aircraft, whose folder is listed once
  const TemporaryFolder aircraft;
  const Modules modules = CopyWorkers(aircraft.Path() / "plugins", kModules);
  const HostedLibrary library;
  gAircraftFolder = aircraft.Path();
  const Loop cycle = [&](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
      VYRAEventHook(VYRA_EVENT_PLANE_LOADED, nullptr, nullptr, 0, 0);
      if (VYRACountPlugins() != library.Count() + 1 + static_cast<int>(kModules)) {
        state.SkipWithError("not every module was loaded");
      }
      VYRAEventHook(VYRA_EVENT_PLANE_UNLOADED, nullptr, nullptr, 0, 0);
    }
  };
  session.Compare("module's whole life", 0, kModules,
                  {{kLibrary, cycle}, {kBareModules, BareCycle(modules)}, {kGModule, GModuleCycle(modules)}});
  gAircraftFolder.clear();
}

void MeasureStartUp(Session& session, std::size_t size) {
  const TemporaryFolder folder;
  const Modules modules = CopyWorkers(folder.Path() / "Resources/plugins", size);
  const Loop startUp = [&](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
      const RunningLibrary library(folder.Path());
      state.PauseTiming();
      if (VYRACountPlugins() != static_cast<int>(size) + 1) state.SkipWithError("not every plugin started");
      VYRAShutdownPlugins();
      state.ResumeTiming();
    }
  };
  session.Compare("start-up", size, size, {{kLibrary, startUp}, {kBareModules, BareStartUp(modules)}});
}

}  // namespace bench
