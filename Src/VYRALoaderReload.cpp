#include "VYRALoaderReload.h"

#include "VYRAHostServices.h"
#include "VYRALoader.h"
#include "VYRALoaderClosing.h"
#include "VYRALoaderLifecycle.h"
#include "VYRALoaderPaths.h"
#include "VYRALoaderState.h"
#include "VYRALoaderSteps.h"
#include "VYRAPlugin.h"

namespace {

// What a reload does next.
enum class Step { nothing, unload, tellUser, load };

bool gScheduleReload = false;
Step gNextStep = Step::nothing;

void UnloadAll() {
  VYRALoaderFreeWaitingIDs();
  VYRADisableAllPlugins();
  VYRAUnloadAcfPlugin();
  VYRAUnloadPlugins();
  VYRALoaderCloseWaitingModules();
}

void TellUser() {
  if (gHooks->serviceTableRevision <= 2) return;
  gHooks->ShowMessage("Please place your new plugin in the plugins folder.",
                      "I will then reload all plugins.", "", "");
}

void LoadAll() {
  char systemPath[kHostPathSize] = "";
  gHooks->GetSystemPath(systemPath);
  VYRALoaderSteps steps;
  steps.Take([&] { VYRAFindAndLoadPlugins(systemPath); });
  steps.Take(VYRAFindAndLoadUserAcfPlugins);
  steps.Take(VYRAEnableAllPlugins);
  gNextStep = Step::nothing;
  steps.End();
}

}  // namespace

void VYRAReloadPlugins(void) { gScheduleReload = true; }

bool VYRALoaderOwesReload() { return gIsStarted && (gScheduleReload || gNextStep != Step::nothing); }

void VYRALoaderForgetReload() {
  gScheduleReload = false;
  gNextStep = Step::nothing;
}

void VYRAReloadPluginsInternal() {
  const StLoaderWork working;
  gScheduleReload = false;
  if (gNextStep == Step::nothing) gNextStep = Step::unload;
  if (gNextStep == Step::unload) {
    UnloadAll();
    if (gNextStep == Step::unload) gNextStep = Step::tellUser;
  }
  // A module that is still open could not be loaded afresh.
  if (!gWaitingModules.empty()) return;
  if (gNextStep == Step::tellUser) {
    gNextStep = Step::load;  // before, as the user is not to be told twice
    TellUser();
  }
  // A shutdown from inside any of it leaves nothing to do.
  if (gNextStep == Step::load) LoadAll();
}
