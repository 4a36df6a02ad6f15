#include "Round.h"

#include <cstdint>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "../RecordingHost.h"
#include "VYRACamera.h"
#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAHost.h"
#include "VYRAPlanes.h"
#include "VYRAPlugin.h"

HostBooks gBooks;

namespace {

constexpr int kFirstItem = 1000;  // the host's numbers of menu items, by the plugins' places

struct PendingLoad {
  VYRAObjectLoaded_f completion;
  void* delivery;
};
std::vector<PendingLoad> gLoads;
float gNow = 0;

VYRAObjectRef NewObject() {
  static std::uintptr_t objects = 0;
  ++gBooks.objectsOut;
  return reinterpret_cast<VYRAObjectRef>(++objects * 16);
}

void CompleteLoads() {
  while (!gLoads.empty()) {
    const PendingLoad load = gLoads.back();
    gLoads.pop_back();
    load.completion(NewObject(), load.delivery);
  }
}

VYRACommandRef Command() {
  static int command;
  return &command;
}

int RunAlone(void (*call)(int plugin), int plugin) {
  try {
    call(plugin);
    return 0;
  } catch (const std::exception&) {
    return 1;
  }
}

void Raise(int event) { VYRAEventHook(event, nullptr, nullptr, gNow, gNow); }
void Send(int plugin, int message) { VYRASendMessageToPlugin(plugin, message, nullptr); }
int MiddleOf(int plugin) { return kPlaceSize * plugin + kPlaceSize / 2; }

VYRADataRef DataRefOf(int plugin) {
  return VYRAFindDataRef(("test/everything/" + std::to_string(plugin)).c_str());
}

void MoveCamera(int plugin) {
  float camera[7] = {};
  Send(plugin, kMessageTakeCamera);
  VYRACameraHook(&camera[0], &camera[1], &camera[2], &camera[3], &camera[4], &camera[5], &camera[6]);
  VYRADontControlCamera();
}

using Step = void (*)(int plugin);

// For all plugins together.
constexpr Step kFrameSteps[] = {
    [](int) { Raise(VYRA_EVENT_BROADCAST_101); },
    [](int) { Raise(VYRA_EVENT_FLIGHT_LOOPS_0); },
    [](int) { Raise(VYRA_EVENT_FLIGHT_LOOPS_1); },
    [](int) { Raise(VYRA_EVENT_COMMAND_REPEAT); },
    [](int) { VYRADoDrawingHook(2, 0); },
    [](int) { VYRADoDrawingHook(20, 0); },
    [](int) { VYRACommandHook(Command(), 1, 0, 1); },
    [](int) { VYRASetDatai(VYRAFindDataRef("test/shared"), 1); },
};

// For one plugin after the other.
constexpr Step kPluginSteps[] = {
    [](int plugin) { Send(plugin, kMessagePrepare); },
    [](int plugin) { VYRAGetDatai(DataRefOf(plugin)); },
    [](int plugin) { VYRASetDatai(DataRefOf(plugin), 1); },
    [](int plugin) { VYRACursorHook(MiddleOf(plugin), 5); },
    [](int plugin) { VYRAScrollWheelHook(MiddleOf(plugin), 5, 0, 1); },
    [](int plugin) { VYRAMouseClickHook(MiddleOf(plugin), 5, 1); },
    [](int plugin) { VYRAMouseClickHook(MiddleOf(plugin), 5, 0); },
    [](int plugin) { VYRAKeyPressHook('k', 0, plugin); },
    [](int) { VYRATakeKeyboardFocus(nullptr); },
    [](int plugin) { VYRAKeyPressHook('k', kHotKeyFlags, plugin); },
    [](int plugin) { VYRAMenuHook(kFirstItem + plugin); },
    MoveCamera,
};

// After those.
constexpr Step kLastSteps[] = {
    [](int) { VYRAReleasePlanes(); },
    [](int) { CompleteLoads(); },
};

}  // namespace

void PrepareHostForRounds() {
  VYRAHostServices& services = gHost.services;
  services.AppendMenuItem = [](int, int, const char* name, int) {
    int place = -1;
    return std::sscanf(name, "Item %d", &place) == 1 ? kFirstItem + place : 0;
  };
  services.GetElapsedTime = [] { return gNow; };
  services.FindCommand = [](const char*, const char*, int) { return Command(); };
  services.CommandBegin = [](VYRACommandRef) { ++gBooks.commandsOut; };
  services.CommandEnd = [](VYRACommandRef) { --gBooks.commandsOut; };
  services.CreateProbe = [] { return ++gBooks.probes; };
  services.LoadObject = [](const char*) { return NewObject(); };
  services.UnloadObject = [](VYRAObjectRef) { --gBooks.objectsOut; };
  services.LoadObjectAsync = [](const char*, VYRAObjectLoaded_f completion, void* delivery) {
    gLoads.push_back({completion, delivery});
  };
}

int FlyRound(float now) {
  gNow = now;
  int exceptions = 0;
  VYRAAcquirePlanes(nullptr, nullptr, nullptr);  // so that the plugins wait for them
  for (const Step step : kFrameSteps) exceptions += RunAlone(step, VYRA_HOST_PLUGIN);
  for (int plugin = 1; plugin < VYRACountPlugins(); ++plugin) {
    for (const Step step : kPluginSteps) exceptions += RunAlone(step, plugin);
  }
  for (const Step step : kLastSteps) exceptions += RunAlone(step, VYRA_HOST_PLUGIN);
  return exceptions;
}

Tally TallyOf(int plugin) {
  Tally tally{};
  VYRASendMessageToPlugin(plugin, kMessageAskTally, &tally);
  return tally;
}

bool AnybodyAnswers(int places) {
  bool answers = VYRACountHotKeys() != 0 || VYRAIsCameraBeingControlled(nullptr) != 0;
  for (int place = 1; place < places; ++place) {
    answers = answers || VYRAMenuHook(kFirstItem + place) != 1 || VYRAIsDataRefGood(DataRefOf(place)) != 0 ||
              VYRAKeyPressHook('k', 0, place) != 1 || VYRAKeyPressHook('k', kHotKeyFlags, place) != 1 ||
              VYRACursorHook(MiddleOf(place), 5) != 0 || VYRAScrollWheelHook(MiddleOf(place), 5, 0, 1) != 1 ||
              VYRAMouseClickHook(MiddleOf(place), 5, 1) != 1;
  }
  return answers;
}
