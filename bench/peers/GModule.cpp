#include "../Peers.h"

#ifdef BENCH_WITH_GMODULE
#include <gmodule.h>
#endif

namespace bench {

#ifdef BENCH_WITH_GMODULE

Loop GModuleCycle(const std::vector<std::filesystem::path>& modules) {
  return [modules](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
      std::vector<GModule*> open;
      for (const std::filesystem::path& path : modules) {
        open.push_back(g_module_open(path.c_str(), G_MODULE_BIND_LOCAL));
        if (open.back() == nullptr) {
          state.SkipWithError(g_module_error());
          return;
        }
        for (const char* name : kModuleCallbacks) {
          gpointer symbol = nullptr;
          benchmark::DoNotOptimize(g_module_symbol(open.back(), name, &symbol));
        }
      }
      for (GModule* module : open) g_module_close(module);
    }
  };
}

#else

Loop GModuleCycle(const std::vector<std::filesystem::path>& /*modules*/) { return {}; }

#endif

}  // namespace bench
