// Simulated keys wait for the next frame: a plugin that presses a key while one is being handled would
// otherwise be called from inside itself, again and again.
#include "host/InputServices.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "VYRAUtilities.h"
#include "host/CommandServices.h"
#include "host/FlightBoard.h"

namespace sim {
namespace {

enum KeyType { kCharacter = 0, kVirtualKey = 1 };

struct SimulatedKey {
  int type;
  int key;
};

std::vector<SimulatedKey> gWaiting;
int gSimulated = 0;
int gLastSimulated = 0;
std::vector<int> gHeldButtons;

const Binding* Find(const std::vector<Binding>& bindings, int number) {
  const auto found = std::ranges::find(bindings, number, &Binding::number);
  return found != bindings.end() ? &*found : nullptr;
}

Binding Key(int virtualKey, const char* command) {
  return {virtualKey, VYRAGetVirtualKeyDescription(static_cast<char>(virtualKey)), command};
}

void Press(const SimulatedKey& simulated) {
  const bool isCharacter = simulated.type == kCharacter;
  const int key = simulated.key & 0xFF;
  const int virtualKey = isCharacter ? (std::isalnum(key) != 0 ? std::toupper(key) : 0) : key;
  const int taken = CallHook("VYRAKeyPressHook", VYRAKeyPressHook, isCharacter ? key : 0, 0, virtualKey);
  if (taken != 0) PressBoundKey(virtualKey);
}

// The first pass of a change presses or releases the command; the second, which comes in every frame while a
// button is held, too, continues it.
void ChangeButton(int button, bool isUp, bool isSecondPass) {
  const Binding* const binding = Find(ButtonBindings(), button);
  const VYRACommandRef command = binding != nullptr ? CommandOfName(binding->command) : nullptr;
  const auto held = std::ranges::find(gHeldButtons, button);
  if (isSecondPass) {
    if (!isUp && command != nullptr) ContinueCommand(command);
  } else if (isUp) {
    if (held == gHeldButtons.end()) return;
    gHeldButtons.erase(held);
    if (command != nullptr && std::ranges::find(gHeldButtons, button) == gHeldButtons.end())
      EndCommand(command);
  } else {
    const bool isNew = held == gHeldButtons.end();
    gHeldButtons.push_back(button);
    if (command != nullptr && isNew) BeginCommand(command);
  }
}

}  // namespace

const std::vector<Binding>& KeyBindings() {
  static const std::vector<Binding> kBindings{
      Key(0x26, "sim/controls/elevator_down"),
      Key(0x28, "sim/controls/elevator_up"),
      Key(0x25, "sim/controls/aileron_left"),
      Key(0x27, "sim/controls/aileron_right"),
      Key(0x24, "sim/controls/trim_up"),
      Key(0x23, "sim/controls/trim_down"),
      Key(0x21, "sim/throttle/increase"),
      Key(0x22, "sim/throttle/decrease"),
      Key(0x2D, "sim/throttle/full"),
      Key(0x2E, "sim/throttle/idle"),
      Key(0x0C, "sim/controls/centre"),
      Key(0x70, "sim/view/own_camera"),
      Key(0x71, "sim/view/nearer"),
      Key(0x72, "sim/view/farther"),
      Key(0x73, "sim/controls/parking_brake"),
      Key(0x74, "sim/autopilot/hold_as_it_is"),
      Key(0x75, "sim/autopilot/off"),
      Key(0x76, "sim/autopilot/gps_hold"),
      Key(0x77, "sim/flight_plan/fly_to_next"),
      Key(0x78, "sim/aircraft/place_again"),
      Key(0x79, "sim/aircraft/place_at_home"),
      Key(0x7A, "sim/scenery/reload"),
      Key(0x7B, "sim/time/pause"),
      Key(0xB9, "sim/time/step"),
      Key(0x65, "sim/view/behind"),
  };
  return kBindings;
}

const std::vector<Binding>& ButtonBindings() {
  static const std::vector<Binding> kBindings{
      {1, "", "sim/controls/brake"},       {2, "", "sim/controls/trim_up"},
      {3, "", "sim/controls/trim_down"},   {4, "", "sim/throttle/increase"},
      {5, "", "sim/throttle/decrease"},    {6, "", "sim/autopilot/off"},
      {7, "", "sim/view/own_camera"},      {8, "", "sim/time/pause"},
      {9, "", "sim/controls/rudder_left"}, {10, "", "sim/controls/rudder_right"},
  };
  return kBindings;
}

void FillInputServices(VYRAHostServices& services) {
  services.SimulateKeyPress = [](int keyType, int key) {
    if (keyType == kCharacter || keyType == kVirtualKey) gWaiting.push_back({keyType, key});
  };
  services.CommandKeyStroke = [](int virtualKey) { PressBoundKey(virtualKey); };
  services.CommandButtonPress = [](const int* buttons, int up, int pass) {
    for (; *buttons != 0; ++buttons) ChangeButton(*buttons, up != 0, pass != 0);
  };
}

VYRACommandRef CommandOfKey(int virtualKey) {
  const Binding* const binding = Find(KeyBindings(), virtualKey);
  return binding != nullptr ? CommandOfName(binding->command) : nullptr;
}

bool PressBoundKey(int virtualKey) {
  const VYRACommandRef command = CommandOfKey(virtualKey);
  if (command == nullptr) return false;
  BeginCommand(command);
  EndCommand(command);
  return true;
}

void PressSimulatedKeys() {
  for (const SimulatedKey& key : std::exchange(gWaiting, {})) {
    ++gSimulated;
    gLastSimulated = key.key;
    Press(key);
  }
}

int CountSimulatedKeys() { return gSimulated; }

int LastSimulatedKey() { return gLastSimulated; }

int CountHeldButtons() { return static_cast<int>(gHeldButtons.size()); }

}  // namespace sim
