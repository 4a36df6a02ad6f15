// What the user does with mouse and keyboard, and who took it: plugins are asked first, and what they leave
// is the simulator's.
#pragma once

#include <string>

#include "host/Keyboard.h"

namespace sim {

inline constexpr const char* kSimulatorTook = "simulator";

// Who took what came last: a plugin's signature, or kSimulatorTook. Empty before the first.
struct LastTakers {
  std::string click;
  std::string key;
  std::string wheel;
};
inline LastTakers gLastTakers;

// The result is who took it.
const std::string& PressMouse(int x, int y);
const std::string& TurnWheel(int x, int y, int wheel, int clicks);
const std::string& PressKey(const NamedKey& key, int flags, int character);

// Pressed where no plugin took it, the mouse turns the simulator's own camera on its way; its wheel brings
// that nearer. A key that no plugin took holds its command until it is released; pressed again before that,
// it only goes to the plugins.
void MoveMouse(int x, int y);
void ReleaseMouse();
void ReleaseKey(const NamedKey& key, int flags, int character);

}  // namespace sim
