#include "VYRALoaderHostCalls.h"

#include "VYRALoaderLifecycleHooks.h"
#include "VYRAModuleLoader.h"

const StHostCall* gHostCall = nullptr;
std::vector<WaitingModule> gWaitingModules;

namespace {

// An exception on its way to the host may have been thrown by a plugin, and point into its module.
bool ExceptionIsOnItsWay() {
  const int before = gHostCall != nullptr ? gHostCall->ExceptionsBefore() : 0;
  return std::uncaught_exceptions() > before;
}

void CloseNow(void* moduleHandle, VYRAPluginID plugin) {
  if (moduleHandle == nullptr) return;
  const StModuleCall closing(plugin, VYRA_CALL_CLOSING, VYRAModulePath(moduleHandle).c_str());
  VYRAUnloadDLL(moduleHandle);
}

}  // namespace

void VYRALoaderCloseWaitingModules() {
  while (!gWaitingModules.empty()) {
    const WaitingModule module = gWaitingModules.back();
    gWaitingModules.pop_back();
    if (module.plugin != VYRA_NO_PLUGIN) VYRALoaderRunCleanupHooks(module.plugin);
    CloseNow(module.handle, module.plugin);
  }
}

bool VYRALoaderIsNested() { return gHostCall != nullptr && gHostCall->IsNested(); }

void VYRALoaderCloseModule(void* moduleHandle, VYRAPluginID plugin) {
  if (moduleHandle == nullptr) return;
  if (VYRALoaderIsNested() || ExceptionIsOnItsWay()) {
    gWaitingModules.push_back({moduleHandle, plugin});
  } else {
    CloseNow(moduleHandle, plugin);
  }
}

void VYRALoaderCloseRejectedModule(void* moduleHandle, VYRAPluginID plugin) {
  if (ExceptionIsOnItsWay()) {
    gWaitingModules.push_back({moduleHandle, VYRA_NO_PLUGIN});
  } else {
    CloseNow(moduleHandle, plugin);
  }
}
