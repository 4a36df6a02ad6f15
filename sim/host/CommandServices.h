// Commands: the simulator's own, those that plugins make, and the user who holds one.
#pragma once

#include <string>

#include "VYRAHost.h"

namespace sim {

void FillCommandServices(VYRAHostServices& services);

// Presses a command and holds it for so many passes, this frame's first. The result is empty, or says why
// it was not pressed.
std::string HoldCommand(const std::string& name, int passes);

// The pass of a frame: what is held is continued, and released when its passes are over.
void ContinueHeldCommands();

}  // namespace sim
