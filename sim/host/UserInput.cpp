// The library says whether a plugin took something, and its watcher which plugins were asked: the one that
// was asked last took it.
#include "host/UserInput.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "VYRAHost.h"
#include "host/CallWatchers.h"
#include "host/CameraServices.h"
#include "host/CommandServices.h"
#include "host/FlightBoard.h"
#include "host/InputServices.h"
#include "report/Activity.h"
#include "view/Screen.h"

namespace sim {
namespace {

// Notes, while it lasts, the plugin that was called last for one of some kinds of calls, whatever is called
// inside such a call.
template <std::size_t Count>
class LastAsked {
 public:
  explicit LastAsked(const std::array<int, Count>& kindsToNote) : kinds(kindsToNote) {
    AddCallWatcher({.structSize = sizeof(VYRAWatcher),
                    .wantsAccessors = 0,
                    .begin = [](const VYRARunningCall* call,
                                void* self) { static_cast<LastAsked*>(self)->Begin(*call); },
                    .end = [](const VYRARunningCall*, void* self) { --static_cast<LastAsked*>(self)->depth; },
                    .refcon = this});
  }
  ~LastAsked() { RemoveCallWatcher(this); }
  LastAsked(const LastAsked&) = delete;
  LastAsked& operator=(const LastAsked&) = delete;

  const std::string& Signature() const { return signature; }

 private:
  void Begin(const VYRARunningCall& call) {
    if (depth++ == 0 && std::ranges::find(kinds, call.kind) != kinds.end()) signature = call.signature;
  }

  std::array<int, Count> kinds;
  int depth = 0;
  std::string signature = "a plugin";
};

constexpr double kDegreesPerPixel = 0.25;
constexpr double kNearerPerClick = 1.0 / 1.1;

bool gTurnsCamera = false;  // as long as the mouse is pressed

}  // namespace

void MoveMouse(int x, int y) {
  // What is seen goes with the mouse.
  if (gTurnsCamera && !PluginHasCamera())
    TurnChaseCamera(kDegreesPerPixel * (gScreen.mouseX - x), kDegreesPerPixel * (y - gScreen.mouseY));
  gScreen.mouseX = x;
  gScreen.mouseY = y;
}

const std::string& PressMouse(int x, int y) {
  MoveMouse(x, y);
  ++gActivity.clicks;
  const LastAsked asked(std::array{static_cast<int>(VYRA_CALL_WINDOW_MOUSE)});
  const bool isTaken = CallHook("VYRAMouseClickHook", VYRAMouseClickHook, x, y, 1) == 0;
  gTurnsCamera = !isTaken;
  return gLastTakers.click = isTaken ? asked.Signature() : kSimulatorTook;
}

void ReleaseMouse() {
  gTurnsCamera = false;
  CallHook("VYRAMouseClickHook", VYRAMouseClickHook, gScreen.mouseX, gScreen.mouseY, 0);
}

const std::string& TurnWheel(int x, int y, int wheel, int clicks) {
  MoveMouse(x, y);
  const LastAsked asked(std::array{static_cast<int>(VYRA_CALL_WINDOW_WHEEL)});
  const bool isTaken = CallHook("VYRAScrollWheelHook", VYRAScrollWheelHook, x, y, wheel, clicks) == 0;
  if (!isTaken && wheel == 0 && !PluginHasCamera()) MoveChaseCamera(std::pow(kNearerPerClick, clicks));
  return gLastTakers.wheel = isTaken ? asked.Signature() : kSimulatorTook;
}

const std::string& PressKey(const NamedKey& key, int flags, int character) {
  ++gActivity.keys;
  const LastAsked asked(std::array{static_cast<int>(VYRA_CALL_KEY_SNIFFER),
                                   static_cast<int>(VYRA_CALL_HOT_KEY),
                                   static_cast<int>(VYRA_CALL_WINDOW_KEY)});
  const bool isTaken = CallHook("VYRAKeyPressHook", VYRAKeyPressHook, character, flags, key.virtualKey) == 0;
  if (!isTaken && flags == 0)
    if (const VYRACommandRef command = CommandOfKey(key.virtualKey)) HoldUntilLetGo(command);
  return gLastTakers.key = isTaken ? asked.Signature() : kSimulatorTook;
}

void ReleaseKey(const NamedKey& key, int flags, int character) {
  CallHook("VYRAKeyPressHook", VYRAKeyPressHook, character, flags | kReleased, key.virtualKey);
  if (const VYRACommandRef command = CommandOfKey(key.virtualKey)) LetGo(command);
}

}  // namespace sim
