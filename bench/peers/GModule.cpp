#include "../Peers.h"

#ifdef BENCH_WITH_GMODULE
#include <gmodule.h>
#endif

namespace bench {

#ifdef BENCH_WITH_GMODULE

Loop GModuleCycle(const std::vector<std::filesystem::path>& modules) {
  return [modules](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
      for (const std::filesystem::path& path : modules) {
        GModule* module = g_module_open(path.c_str(), G_MODULE_BIND_LOCAL);
        if (module == nullptr) {
          state.SkipWithError(g_module_error());
          return;
        }
        for (const char* name : kModuleCallbacks) {
          gpointer symbol = nullptr;
          benchmark::DoNotOptimize(g_module_symbol(module, name, &symbol));
        }
        g_module_close(module);
      }
    }
  };
}

#else

Loop GModuleCycle(const std::vector<std::filesystem::path>& /*modules*/) { return {}; }

#endif

}  // namespace bench
