// A write of shared data, of which every subscriber is told.
#include <VYRADataAccess.h>

#include "../Bare.h"
#include "../HostedLibrary.h"
#include "Measures.h"

namespace bench {

namespace {

constexpr VYRAPluginID kWriter = 1;
constexpr const char* kItem = "bench/shared";

int gCalls = 0;

void CountChange(void* /*refcon*/) { ++gCalls; }

}  // namespace

void MeasureSharedDataWrite(Session& session, std::size_t size) {
  const HostedLibrary library;
  library.Share(size, [](std::size_t) { VYRAShareData(kItem, VYRA_TYPE_INT, CountChange, nullptr); });
  const VYRADataRef item = VYRAFindDataRef(kItem);
  const Loop write = [=](benchmark::State& state) {
    gCalls = 0;
    for ([[maybe_unused]] auto iteration : state) VYRASetDatai(item, 7);
    if (gCalls != static_cast<int>(state.iterations() * static_cast<std::int64_t>(size))) {
      state.SkipWithError("wrong calls");
    }
  };
  session.Compare("shared-data subscriber", size, size,
                  {{kLibrary, HostedLibrary::As(kWriter, write)},
                   {kBareCall, BarePass<VYRADataChanged_f>(size, CountChange, nullptr)}});
}

}  // namespace bench
