// A phase of a command goes to the plugins before and after the simulator acts on it. Whoever presses it, the
// user or a plugin, makes no difference.
#include "host/CommandServices.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_set>

#include "host/FlightBoard.h"
#include "host/PluginList.h"
#include "report/Activity.h"

namespace sim {
namespace {

struct Command {
  std::string description;
  std::string ownerPath;
  const CommandRow* own = nullptr;  // what the simulator itself does; null for plugins' commands
};

using CommandsByName = std::map<std::string, Command, std::less<>>;

CommandsByName MakeOwnCommands() {
  CommandsByName commands;
  for (const CommandRow& row : OwnCommands()) commands[row.name] = {row.description, "", &row};
  return commands;
}

// Their addresses are what the library and the plugins know them by, so they stay until the end.
CommandsByName& Commands() {
  static CommandsByName commands = MakeOwnCommands();
  return commands;
}

// Every address that was given out.
std::unordered_set<const void*> gReferences;

struct HeldCommand {
  VYRACommandRef command;
  std::optional<int> passesLeft;  // none for one that is held until it is let go
};

std::vector<HeldCommand> gHeldCommands;

auto FindHeldUntilLetGo(VYRACommandRef command) {
  return std::ranges::find_if(gHeldCommands, [command](const HeldCommand& held) {
    return held.command == command && !held.passesLeft;
  });
}

VYRACommandRef Find(const char* name, const char* description, int create) {
  if (name == nullptr) return nullptr;
  CommandsByName& commands = Commands();
  auto found = commands.find(std::string_view(name));
  if (found == commands.end()) {
    if (create == 0) return nullptr;
    found = commands.emplace(name, Command{description != nullptr ? description : "", CallerPath()}).first;
  }
  gReferences.insert(&found->second);
  return &found->second;
}

using Action = void (*)();

// action: the simulator's own, or null.
void GoThrough(VYRACommandRef reference, int isBegin, int isEnd, Action CommandRow::*action) {
  if (!gReferences.contains(reference)) return;
  const CommandRow* const own = static_cast<const Command*>(reference)->own;
  const bool isWanted = CallHook("VYRACommandHook", VYRACommandHook, reference, isBegin, isEnd, 1) != 0;
  if (isWanted && own != nullptr && own->*action != nullptr) (own->*action)();
  CallHook("VYRACommandHook", VYRACommandHook, reference, isBegin, isEnd, 0);
}

}  // namespace

const std::vector<CommandRow>& OwnCommands() {
  static const std::vector<CommandRow> kRows = [] {
    std::vector<CommandRow> rows;
    for (std::vector<CommandRow> (*const part)() :
         {ControlCommands, AutopilotCommands, AircraftCommands, NavigationCommands, SystemCommands})
      for (CommandRow& row : part()) rows.push_back(std::move(row));
    return rows;
  }();
  return kRows;
}

void FillCommandServices(VYRAHostServices& services) {
  services.FindCommand = Find;
  services.CommandBegin = BeginCommand;
  services.CommandRepeat = ContinueCommand;
  services.CommandEnd = EndCommand;
}

std::vector<CommandInfo> ListCommands() {
  std::vector<CommandInfo> list;
  for (const auto& [name, command] : Commands())
    list.push_back({name, command.description, command.ownerPath, CommandOfName(name)});
  return list;
}

VYRACommandRef CommandOfName(const std::string& name) { return Find(name.c_str(), nullptr, 0); }

void BeginCommand(VYRACommandRef command) { GoThrough(command, 1, 0, &CommandRow::begin); }

void ContinueCommand(VYRACommandRef command) { GoThrough(command, 0, 0, &CommandRow::whileHeld); }

void EndCommand(VYRACommandRef command) { GoThrough(command, 0, 1, &CommandRow::end); }

std::string HoldCommand(const std::string& name, int passes) {
  const VYRACommandRef command = CommandOfName(name);
  if (command == nullptr) return "there is no such command";
  gHeldCommands.push_back({command, passes});
  ++gActivity.commandsHeld;
  BeginCommand(command);
  return "";
}

void HoldUntilLetGo(VYRACommandRef command) {
  if (FindHeldUntilLetGo(command) != gHeldCommands.end()) return;
  gHeldCommands.push_back({command, std::nullopt});
  BeginCommand(command);
}

void LetGo(VYRACommandRef command) {
  const auto held = FindHeldUntilLetGo(command);
  if (held == gHeldCommands.end()) return;
  gHeldCommands.erase(held);
  EndCommand(command);
}

void ContinueHeldCommands() {
  for (HeldCommand& held : gHeldCommands) {
    ++gActivity.commandPasses;
    ContinueCommand(held.command);
    if (held.passesLeft && --*held.passesLeft == 0) EndCommand(held.command);
  }
  std::erase_if(gHeldCommands, [](const HeldCommand& held) { return held.passesLeft == 0; });
}

}  // namespace sim
