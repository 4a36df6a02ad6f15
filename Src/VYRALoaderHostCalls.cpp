#include "VYRALoaderHostCalls.h"

#include <exception>
#include <vector>

#include "VYRALoaderLifecycleHooks.h"
#include "VYRALoaderRegistry.h"
#include "VYRAModuleLoader.h"

namespace {

struct WaitingModule {
  void* handle;
  VYRAPluginID plugin;  // VYRA_NO_PLUGIN: nothing more can come from it
};

StHostCall::State gHostCall;
std::vector<WaitingModule> gWaitingModules;

// An exception on its way to the host may have been thrown by a plugin, and point into its module.
bool ExceptionIsOnItsWay() { return std::uncaught_exceptions() > gHostCall.exceptions; }

void CloseWaitingModules() {
  while (!gWaitingModules.empty()) {
    const WaitingModule module = gWaitingModules.back();
    gWaitingModules.pop_back();
    if (module.plugin != VYRA_NO_PLUGIN) VYRALoaderRunCleanupHooks(module.plugin);
    VYRAUnloadDLL(module.handle);
  }
}

}  // namespace

StHostCall::StHostCall() : savedPlugin(gDispatchedPlugin), savedState(gHostCall) {
  const bool nested = gHostCall.running || gDispatchDepth > 0;
  gHostCall = {.running = true, .nested = nested, .exceptions = std::uncaught_exceptions()};
  if (!nested) CloseWaitingModules();
}

StHostCall::~StHostCall() noexcept(false) {
  const bool mayClose = !gHostCall.nested && !ExceptionIsOnItsWay();
  gDispatchedPlugin = savedPlugin;
  gHostCall = savedState;
  if (mayClose) CloseWaitingModules();
}

bool VYRALoaderIsNested() { return gHostCall.nested; }

bool VYRALoaderHasWaitingModules() { return !gWaitingModules.empty(); }

void VYRALoaderCloseModule(void* moduleHandle, VYRAPluginID plugin) {
  if (moduleHandle == nullptr) return;
  if (gHostCall.nested || ExceptionIsOnItsWay()) {
    gWaitingModules.push_back({moduleHandle, plugin});
  } else {
    VYRAUnloadDLL(moduleHandle);
  }
}

void VYRALoaderCloseRejectedModule(void* moduleHandle) {
  if (ExceptionIsOnItsWay()) {
    gWaitingModules.push_back({moduleHandle, VYRA_NO_PLUGIN});
  } else {
    VYRAUnloadDLL(moduleHandle);
  }
}
