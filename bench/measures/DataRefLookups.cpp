// Finding datarefs by name and checking handles, among registries of growing size.
#include <VYRADataAccess.h>

#include <unordered_map>

#include "../HostedLibrary.h"
#include "../InTurn.h"
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
    AskInTurn(state, asked, [&](const std::string& name) { return table.find(name)->second; });
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
    AskInTurn(state, asked, [](const std::string& name) { return VYRAFindDataRef(name.c_str()); });
  };
  session.Compare("find by name", size, 1,
                  {{kLibrary, HostedLibrary::As(kCaller, find)},
                   {kBareTable, BareFind(names, asked)},
                   {kSimGear, SimGearFind(names, asked)}});
}

void MeasureCheck(Session& session, std::size_t size) {
  const HostedLibrary library;
  const std::vector<VYRADataRef> handles = Shuffled(PublishInts(library, size));
  const Loop check = [&](benchmark::State& state) { AskInTurn(state, handles, VYRAIsDataRefGood); };
  session.Compare("check a handle", size, 1, {{kLibrary, HostedLibrary::As(kCaller, check)}});
}

}  // namespace bench
