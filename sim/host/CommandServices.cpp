// A phase of a command goes to the plugins before and after the simulator acts on it. Whoever presses it, the
// user or a plugin, makes no difference.
#include "host/CommandServices.h"

#include <algorithm>
#include <deque>
#include <vector>

#include "host/FlightBoard.h"
#include "report/Activity.h"
#include "world/World.h"

namespace sim {
namespace {

struct Command {
  std::string name;
  float throttlePerPhase = 0.0F;  // what the simulator itself does: 0, nothing, for plugins' commands
};

// Their addresses are what the library and the plugins know them by, so they stay until the end.
std::deque<Command> gCommands{{"sim/throttle/increase", 0.01F}, {"sim/throttle/decrease", -0.01F}};

struct HeldCommand {
  VYRACommandRef command;
  int passesLeft;
};

std::vector<HeldCommand> gHeldCommands;

VYRACommandRef FindCommand(const char* name, const char* /*description*/, int create) {
  const auto found = std::ranges::find(gCommands, name, &Command::name);
  if (found != gCommands.end()) return &*found;
  return create != 0 ? &gCommands.emplace_back(Command{.name = name}) : nullptr;
}

enum class Phase { Begin, Continue, End };

// A plugin may hand over any pointer as a command.
void GoThrough(VYRACommandRef reference, Phase phase) {
  const auto command =
      std::ranges::find_if(gCommands, [reference](const Command& one) { return &one == reference; });
  if (command == gCommands.end()) return;
  const int isBegin = phase == Phase::Begin ? 1 : 0;
  const int isEnd = phase == Phase::End ? 1 : 0;
  float& throttle = gWorld.aircraft.throttleRatio;
  if (CallHook("VYRACommandHook", VYRACommandHook, reference, isBegin, isEnd, 1) != 0 && phase != Phase::End)
    throttle = std::clamp(throttle + command->throttlePerPhase, 0.0F, 1.0F);
  CallHook("VYRACommandHook", VYRACommandHook, reference, isBegin, isEnd, 0);
}

}  // namespace

void FillCommandServices(VYRAHostServices& services) {
  services.FindCommand = FindCommand;
  services.CommandBegin = [](VYRACommandRef command) { GoThrough(command, Phase::Begin); };
  services.CommandRepeat = [](VYRACommandRef command) { GoThrough(command, Phase::Continue); };
  services.CommandEnd = [](VYRACommandRef command) { GoThrough(command, Phase::End); };
}

std::string HoldCommand(const std::string& name, int passes) {
  const VYRACommandRef command = FindCommand(name.c_str(), nullptr, 0);
  if (command == nullptr) return "there is no such command";
  gHeldCommands.push_back({command, passes});
  ++gActivity.commandsHeld;
  GoThrough(command, Phase::Begin);
  return "";
}

void ContinueHeldCommands() {
  for (HeldCommand& held : gHeldCommands) {
    ++gActivity.commandPasses;
    GoThrough(held.command, Phase::Continue);
    if (--held.passesLeft == 0) GoThrough(held.command, Phase::End);
  }
  std::erase_if(gHeldCommands, [](const HeldCommand& held) { return held.passesLeft == 0; });
}

}  // namespace sim
