// Commands: the simulator's own, those that plugins make, and the user who holds one.
#pragma once

#include <string>
#include <vector>

#include "VYRAHost.h"
#include "host/commands/CommandRow.h"

namespace sim {

void FillCommandServices(VYRAHostServices& services);

// The simulator's own commands, by name.
const std::vector<CommandRow>& OwnCommands();

// All commands, in the order of their names.
struct CommandInfo {
  std::string name;
  std::string description;
  std::string ownerPath;  // of the module that made it; empty for the simulator's own
  VYRACommandRef command;
};
std::vector<CommandInfo> ListCommands();

// Null when there is none of this name.
VYRACommandRef CommandOfName(const std::string& name);

// The phases of a command, whoever goes through them: plugins are asked, the simulator does what it does, and
// plugins are told. A pointer that is no command is ignored.
void BeginCommand(VYRACommandRef command);
void ContinueCommand(VYRACommandRef command);
void EndCommand(VYRACommandRef command);

// Presses a command and holds it for so many passes, this frame's first. The result is empty, or says why
// it was not pressed.
std::string HoldCommand(const std::string& name, int passes);

// Presses a command, which is then continued in each pass until it is let go. One that is held so already, or
// is not, is left as it is.
void HoldUntilLetGo(VYRACommandRef command);
void LetGo(VYRACommandRef command);

// The pass of a frame: what is held is continued, and released when its passes are over.
void ContinueHeldCommands();

}  // namespace sim
