// A phase of a command, among many commands that plugins handle.
#include <VYRAUtilities.h>

#include <array>
#include <unordered_map>

#include "../HostedLibrary.h"
#include "DataRefPopulation.h"
#include "Measures.h"

namespace bench {

namespace {

int gCalls = 0;

int HandleCommand(VYRACommandRef /*command*/, int /*phase*/, void* /*refcon*/) {
  ++gCalls;
  return 1;
}

// The look-up alone, without a call of what it finds.
Loop BareLookUp(const std::vector<VYRACommandRef>& commands, const std::vector<VYRACommandRef>& asked) {
  std::unordered_map<VYRACommandRef, VYRACommandHandler_f> table;
  for (const VYRACommandRef command : commands) table.emplace(command, HandleCommand);
  return [table = std::move(table), &asked](benchmark::State& state) {
    std::size_t next = 0;
    for ([[maybe_unused]] auto iteration : state) {
      benchmark::DoNotOptimize(table.find(asked[next])->second);
      if (++next == asked.size()) next = 0;
    }
  };
}

}  // namespace

void MeasureCommandPhase(Session& session, std::size_t size) {
  const HostedLibrary library;
  // A host's commands are records of its own, 64 bytes each here; the library only sees their addresses.
  std::vector<std::array<char, 64>> records(size);
  std::vector<VYRACommandRef> commands;
  for (auto& record : records) commands.push_back(reinterpret_cast<VYRACommandRef>(record.data()));
  library.Share(size,
                [&](std::size_t i) { VYRARegisterCommandHandler(commands[i], HandleCommand, 1, nullptr); });
  const std::vector<VYRACommandRef> asked = Shuffled(commands);

  session.Compare("command phase", size, 1,
                  {{kLibrary,
                    [&](benchmark::State& state) {
                      gCalls = 0;
                      std::size_t next = 0;
                      for ([[maybe_unused]] auto iteration : state) {
                        benchmark::DoNotOptimize(VYRACommandHook(asked[next], 1, 0, 1));
                        if (++next == asked.size()) next = 0;
                      }
                      if (gCalls != static_cast<int>(state.iterations())) state.SkipWithError("wrong calls");
                    }},
                   {kBareTable, BareLookUp(commands, asked)}});
}

}  // namespace bench
