// The services by which plugins press keys and buttons, and what the simulator's own keys and buttons do.
#pragma once

#include <string>
#include <vector>

#include "VYRAHost.h"

namespace sim {

void FillInputServices(VYRAHostServices& services);

// A key or a button, and the command that it presses.
struct Binding {
  int number;           // the virtual key, or the button
  std::string keyName;  // empty for a button
  std::string command;
};
const std::vector<Binding>& KeyBindings();
const std::vector<Binding>& ButtonBindings();

// The command that a key presses in the simulator itself; null for none.
VYRACommandRef CommandOfKey(int virtualKey);

// Does what a key does in the simulator itself, whatever plugins make of it; false when it does nothing.
bool PressBoundKey(int virtualKey);

// Presses the keys that plugins asked for since it was called last, as if the user had: plugins are asked
// first, and what they leave goes to the simulator's own bindings. To be called once per frame.
void PressSimulatedKeys();

int CountSimulatedKeys();
int LastSimulatedKey();
int CountHeldButtons();

}  // namespace sim
