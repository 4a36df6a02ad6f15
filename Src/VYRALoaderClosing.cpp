#include "VYRALoaderClosing.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "VYRALoaderHostCalls.h"
#include "VYRALoaderIdentities.h"
#include "VYRALoaderLifecycleHooks.h"
#include "VYRALoaderState.h"
#include "VYRALoaderSteps.h"
#include "VYRAModuleLoader.h"

std::vector<ClosingModule> gWaitingModules;

namespace {

// One on its way to the host, in the hands of a catch block, or kept for later. Its type may live in a
// module.
bool IsThereAnException() {
  return std::uncaught_exceptions() > 0 || VYRALoaderSteps::IsAnExceptionKept() ||
         std::current_exception() != nullptr;
}

void Close(const ClosingModule& module, VYRAPluginID dispatched) {
  if (module.handle == nullptr) return;
  const StLoaderWork working;
  const StActAs acting(dispatched);
  const std::string path = VYRAModulePath(module.handle);
  // The ID of one that waited may have been given to another plugin.
  const bool isStillItsID = path == VYRAIdentityOf(module.plugin).path;
  const StModuleCall closing(isStillItsID ? module.plugin : VYRA_NO_PLUGIN, VYRA_CALL_CLOSING, path.c_str());
  VYRAUnloadDLL(module.handle);
}

}  // namespace

void VYRALoaderCloseModule(ClosingModule module) {
  module.holdsID = VYRALoaderIsNested();
  if (module.handle == nullptr) return;
  if (!module.holdsID && !IsThereAnException()) {
    Close(module, VYRA_NO_PLUGIN);
    return;
  }
  VYRARegistryHoldID(module.plugin, module.holdsID);
  gWaitingModules.push_back(std::move(module));
}

void VYRALoaderCloseRejectedModule(ClosingModule module, VYRAPluginID dispatched) {
  if (module.handle == nullptr) return;
  if (IsThereAnException()) {
    gWaitingModules.push_back(std::move(module));
  } else {
    Close(module, dispatched);
  }
}

void VYRALoaderFreeWaitingIDs() {
  const StLoaderWork working;
  for (;;) {
    const auto waiting = std::ranges::find(gWaitingModules, true, &ClosingModule::holdsID);
    if (waiting == gWaitingModules.end()) break;
    const VYRAPluginID plugin = waiting->plugin;
    VYRALoaderRunCleanupHooks(plugin);
    // Afresh, as what the hooks led to may have made more modules wait.
    for (ClosingModule& module : gWaitingModules) {
      if (module.plugin == plugin) module.holdsID = false;
    }
    VYRARegistryHoldID(plugin, false);
  }
  VYRARegistryDropClosed();
}

void VYRALoaderCloseWaitingModules() {
  VYRALoaderFreeWaitingIDs();
  while (!gWaitingModules.empty() && !IsThereAnException()) {
    const ClosingModule module = std::move(gWaitingModules.front());
    gWaitingModules.erase(gWaitingModules.begin());
    Close(module, VYRA_NO_PLUGIN);
  }
}
