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

const StHostCall* gHostCall = nullptr;  // the innermost that runs
std::vector<WaitingModule> gWaitingModules;

// An exception on its way to the host may have been thrown by a plugin, and point into its module.
bool ExceptionIsOnItsWay() {
  const int before = gHostCall != nullptr ? gHostCall->ExceptionsBefore() : 0;
  return std::uncaught_exceptions() > before;
}

void CloseWaitingModules() {
  while (!gWaitingModules.empty()) {
    const WaitingModule module = gWaitingModules.back();
    gWaitingModules.pop_back();
    if (module.plugin != VYRA_NO_PLUGIN) VYRALoaderRunCleanupHooks(module.plugin);
    VYRAUnloadDLL(module.handle);
  }
}

}  // namespace

StHostCall::StHostCall()
    : outer(gHostCall),
      savedPlugin(gDispatchedPlugin),
      nested(outer != nullptr || gDispatchDepth > 0),
      exceptions(std::uncaught_exceptions()) {
  gHostCall = this;
  if (!nested) CloseWaitingModules();
}

StHostCall::~StHostCall() noexcept(false) {
  const bool mayClose = !nested && !gWaitingModules.empty() && !ExceptionIsOnItsWay();
  gDispatchedPlugin = savedPlugin;
  gHostCall = outer;
  if (mayClose) CloseWaitingModules();
}

bool VYRALoaderIsNested() { return gHostCall != nullptr && gHostCall->IsNested(); }

bool VYRALoaderHasWaitingModules() { return !gWaitingModules.empty(); }

void VYRALoaderCloseModule(void* moduleHandle, VYRAPluginID plugin) {
  if (moduleHandle == nullptr) return;
  if (VYRALoaderIsNested() || ExceptionIsOnItsWay()) {
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
