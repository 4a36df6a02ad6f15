// Finding datarefs by name and checking handles, among registries of growing size.
#include <VYRADataAccess.h>

#include <unordered_map>

#include "../HostedLibrary.h"
#include "../Peers.h"
#include "DataRefPopulation.h"
#include "Measures.h"

namespace bench {

namespace {

constexpr VYRAPluginID kCaller = 2;

// The table is filled in the order of registration, as the library's is.
Loop BareFind(const std::vector<std::string>& names, const std::vector<std::string>& asked) {
  std::unordered_map<std::string, const void*> table;
  for (const std::string& name : names) table.emplace(name, &asked);
  return [table = std::move(table), &asked](benchmark::State& state) {
    std::size_t next = 0;
    for ([[maybe_unused]] auto iteration : state) {
      benchmark::DoNotOptimize(table.find(asked[next])->second);
      if (++next == asked.size()) next = 0;
    }
  };
}

}  // namespace

void MeasureFind(Session& session, std::size_t size) {
  const HostedLibrary library;
  PublishInts(library, size);
  std::vector<std::string> names;
  for (std::size_t i = 0; i < size; ++i) names.push_back(DataRefName(i));
  const std::vector<std::string> asked = Shuffled(names);

  const Loop find = [&](benchmark::State& state) {
    std::size_t next = 0;
    for ([[maybe_unused]] auto iteration : state) {
      benchmark::DoNotOptimize(VYRAFindDataRef(asked[next].c_str()));
      if (++next == asked.size()) next = 0;
    }
  };
  session.Compare("find by name", size, 1,
                  {{kLibrary, HostedLibrary::As(kCaller, find)},
                   {kBareTable, BareFind(names, asked)},
                   {kSimGear, SimGearFind(names, asked)}});
}

void MeasureCheck(Session& session, std::size_t size) {
  const HostedLibrary library;
  const std::vector<VYRADataRef> handles = Shuffled(PublishInts(library, size));
  session.Compare("check a handle", size, 1,
                  {{kLibrary, HostedLibrary::As(kCaller, [&](benchmark::State& state) {
                      std::size_t next = 0;
                      for ([[maybe_unused]] auto iteration : state) {
                        benchmark::DoNotOptimize(VYRAIsDataRefGood(handles[next]));
                        if (++next == handles.size()) next = 0;
                      }
                    })}});
}

}  // namespace bench
