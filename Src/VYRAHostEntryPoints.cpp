// What the simulator calls to start, to stop and to tell of events, each handed on to the subsystem that it
// is for. The hooks for input and queries stand in VYRAHostEntryPointsInput.cpp.
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "VYRADataAccess.h"
#include "VYRADisplayCameraInternal.h"
#include "VYRAHostEntryPointsCall.h"
#include "VYRAHostServices.h"
#include "VYRALoader.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderLifecycle.h"
#include "VYRALoaderReload.h"
#include "VYRALoaderState.h"
#include "VYRALoaderSteps.h"
#include "VYRAMenusInternal.h"
#include "VYRAProcessingInternal.h"
#include "VYRAUtilitiesCommands.h"
#include "VYRAUtilitiesKeys.h"

namespace {

constexpr int kHostInterfaceRevision = 18;

// Tells whoever reads the host's datarefs which build runs, when the host has registered the place for it.
void PublishBuildString() {
  const VYRADataRef buildString = VYRAFindDataRef("sim/version/vyra_build_string");
  if (buildString == nullptr) return;
  char build[64];
  std::snprintf(build, sizeof(build), "%s %s", __DATE__, __TIME__);
  VYRASetDatab(buildString, build, 0, static_cast<int>(std::strlen(build) + 1));
}

void Broadcast(int message, void* param) {
  const StActAs host(VYRA_HOST_PLUGIN);
  VYRASendMessageToPlugin(VYRA_NO_PLUGIN, message, param);
}

bool IsUsersPlane(const void* planeIndex) { return reinterpret_cast<std::intptr_t>(planeIndex) == 0; }

// Plugins hear of the plane before its own plugins are loaded, and of its end before they are unloaded, so
// an aircraft's plugins receive the second message only.
void PlaneLoaded(void* planeIndex) {
  VYRALoaderSteps steps;
  steps.Take([&] { Broadcast(VYRA_MESSAGE_PLANE_LOADED, planeIndex); });
  if (IsUsersPlane(planeIndex)) {
    steps.Take(VYRAFindAndLoadUserAcfPlugins);
    steps.Take(VYRAEnableACFPlugins);
  }
  steps.End();
}

void PlaneUnloaded(void* planeIndex) {
  Broadcast(VYRA_MESSAGE_PLANE_UNLOADED, planeIndex);
  if (!IsUsersPlane(planeIndex)) return;
  VYRADisableACFPlugins();
  VYRAUnloadAcfPlugin();
}

// A pass, and then the reload that was asked for before or in it. A pass inside a plugin's code leaves the
// reload to the pass around it.
int VYRADoFlightLoopProcessing(float now, int event) {
  VYRAProcessingRunPass(now, event != 0 ? VYRA_FLIGHT_LOOP_PHASE_1 : VYRA_FLIGHT_LOOP_PHASE_0);
  if (VYRALoaderOwesReload() && !VYRALoaderIsNested()) VYRAReloadPluginsInternal();
  return 1;
}

// Takes back that the library is started when the start was left before anything was loaded.
class StStarting {
 public:
  StStarting() { gIsStarted = true; }
  ~StStarting() {
    if (gAllPlugins.empty()) gIsStarted = false;
  }
  StStarting(const StStarting&) = delete;
  StStarting& operator=(const StStarting&) = delete;
};

bool MayStart() {
  return !gIsStarted && !StLoaderWork::IsInProgress() && gAllPlugins.empty() && gWaitingModules.empty();
}

void Start(const char* systemPath, VYRAHostServices* services, void* self) {
  if (!MayStart()) return;
  const StLoaderWork working;
  const StStarting starting;
  gSelf = self;
  gHooks = services;
  VYRAInitMenus();
  PublishBuildString();
  VYRALoaderSteps steps;
  steps.Take([&] { VYRAFindAndLoadPlugins(systemPath); });
  steps.Take(VYRAEnableAllPlugins);
  steps.End();
}

int HandleEvent(int event, void* param, float elapsed) {
  switch (event) {
    case VYRA_EVENT_FLIGHT_LOOPS_0:
      VYRADoRepeatedButtons();
      [[fallthrough]];
    case VYRA_EVENT_FLIGHT_LOOPS_1:
      return VYRADoFlightLoopProcessing(elapsed, event);
    case VYRA_EVENT_VIEW_CHANGED:
      VYRAReleaseCamera();
      break;
    case VYRA_EVENT_BROADCAST_101:
      Broadcast(VYRA_MESSAGE_HOST_101, nullptr);
      break;
    case VYRA_EVENT_PLANE_LOADED:
      PlaneLoaded(param);
      break;
    case VYRA_EVENT_BROADCAST_103:
      Broadcast(VYRA_MESSAGE_HOST_103, nullptr);
      break;
    case VYRA_EVENT_BROADCAST_104:
      Broadcast(VYRA_MESSAGE_HOST_104, nullptr);
      break;
    case VYRA_EVENT_BROADCAST_105:
      Broadcast(VYRA_MESSAGE_HOST_105, nullptr);
      break;
    case VYRA_EVENT_PLANE_UNLOADED:
      PlaneUnloaded(param);
      break;
    case VYRA_EVENT_COMMAND_REPEAT:
      VYRACommandRepeatHook();
      break;
    case VYRA_EVENT_BROADCAST_107:
      Broadcast(VYRA_MESSAGE_HOST_107, nullptr);
      break;
    case VYRA_EVENT_SCENERY_PACKAGE:
      if (param != nullptr) VYRAFindAndLoadSceneryPlugins(static_cast<const char*>(param));
      break;
    case VYRA_EVENT_BROADCAST_108:
      Broadcast(VYRA_MESSAGE_HOST_108, param);
      break;
    default:
      break;
  }
  return 1;
}

}  // namespace

int VYRAInitializePlugins(const char* systemPath, VYRAHostServices* services, void* self) {
  if (systemPath == nullptr || services == nullptr) return kHostInterfaceRevision;
  VYRARunHostCall([&] { Start(systemPath, services, self); });
  return kHostInterfaceRevision;
}

void VYRAShutdownPlugins(void) {
  VYRARunHostCall([] {
    VYRALoaderForgetReload();
    VYRADisableAllPlugins();
    VYRAUnloadPlugins();
    VYRALoaderForgetReload();  // for which a stop callback may have asked
    gIsStarted = false;
  });
}

int VYRAEventHook(int event, void* param, void* /*param2*/, float elapsed, float /*elapsed2*/) {
  return VYRARunHostCall([&] { return HandleEvent(event, param, elapsed); });
}
