// A phase of a command, among many commands that plugins handle.
#include <VYRAUtilities.h>

#include <memory>
#include <string>
#include <unordered_map>

#include "../HostedLibrary.h"
#include "../InTurn.h"
#include "DataRefPopulation.h"
#include "Measures.h"

namespace bench {

namespace {

// A command as a host keeps it, in a place of its own. The library only sees its address.
struct HostCommand {
  std::string name;
  std::string description;
};

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
    AskInTurn(state, asked, [&](VYRACommandRef command) { return table.find(command)->second; });
  };
}

}  // namespace

void MeasureCommandPhase(Session& session, std::size_t size) {
  const HostedLibrary library;
  std::vector<std::unique_ptr<HostCommand>> records;
  std::vector<VYRACommandRef> commands;
  for (std::size_t i = 0; i < size; ++i) {
    records.push_back(std::make_unique<HostCommand>(HostCommand{
        fmt::format("bench/area_{:02}/command_{:03}", i / 1000, i % 1000), fmt::format("Command {}", i)}));
    commands.push_back(records.back().get());
  }
  library.Share(size,
                [&](std::size_t i) { VYRARegisterCommandHandler(commands[i], HandleCommand, 1, nullptr); });
  const std::vector<VYRACommandRef> asked = Shuffled(commands);

  const Loop phase = [&](benchmark::State& state) {
    gCalls = 0;
    AskInTurn(state, asked, [](VYRACommandRef command) { return VYRACommandHook(command, 1, 0, 1); });
    if (gCalls != static_cast<int>(state.iterations())) state.SkipWithError("wrong calls");
  };
  session.Compare("command phase", size, 1, {{kLibrary, phase}, {kBareTable, BareLookUp(commands, asked)}});
}

}  // namespace bench
