// What the library keeps in memory: counted by the C library's allocator, its own overhead included.
#include <VYRAPlugin.h>
#include <dlfcn.h>
#include <malloc.h>

#include "../HostedLibrary.h"
#include "DataRefPopulation.h"
#include "Measures.h"

namespace bench {

namespace {

double BytesInUse() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

}  // namespace

void MeasureDataRefMemory(Session& session) {
  const HostedLibrary library;
  const std::size_t size = session.Options().largest;
  const std::size_t first = size;  // names that no measure has published yet
  double names = 0;
  for (std::size_t i = 0; i < size; ++i) names += static_cast<double>(DataRefName(first + i).size() + 1);
  const double before = BytesInUse();
  PublishInts(library, size, first);
  const double after = BytesInUse();
  session.Keep("memory per dataref beyond its name", kLibrary, "bytes",
               (after - before - names) / static_cast<double>(size));
}

void MeasurePluginMemory(Session& session) {
  constexpr std::size_t kPlugins = 100;
  const TemporaryFolder folder;
  const std::vector<std::filesystem::path> modules =
      CopyWorkers(folder.Path() / "Resources/plugins", kPlugins);

  const double before = BytesInUse();
  std::vector<void*> open;
  open.reserve(kPlugins);
  for (const std::filesystem::path& path : modules) open.push_back(dlopen(path.c_str(), RTLD_NOW));
  const double bare = BytesInUse() - before;
  for (void* module : open) dlclose(module);

  const double beforeStart = BytesInUse();
  const RunningLibrary library(folder.Path());
  session.Keep("memory per idle plugin beyond its module", kLibrary, "bytes",
               (BytesInUse() - beforeStart - bare) / static_cast<double>(VYRACountPlugins() - 1));
}

}  // namespace bench
