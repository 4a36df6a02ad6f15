#include "VYRALoaderReports.h"

#include <string>

#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"

const char* DebugCurrentPluginName() {
  if (gDispatchedPlugin == VYRA_NO_PLUGIN) return "[NO_PLUGIN_ID]";
  if (gDispatchedPlugin == VYRA_HOST_PLUGIN) return "[VYRA_PLUGIN_SKYVORA]";
  if (gDispatchedPlugin < 0) return "[Bad plugin ID low]";
  if (!VYRARegistryHolds(gDispatchedPlugin)) return "[Bad plugin ID high]";
  return VYRARegistryRecord(gDispatchedPlugin).name.c_str();
}

const char* VYRADebugGetCurrentPluginName(void) { return DebugCurrentPluginName(); }

bool VYRAHasError() {
  return VYRARegistryHolds(gDispatchedPlugin) && VYRARegistryRecord(gDispatchedPlugin).error != nullptr;
}

void VYRASendError(const char* message) {
  if (!VYRAHasError()) return;
  const auto report = VYRARegistryRecord(gDispatchedPlugin).error;
  const StDispatchCallback dispatch(gDispatchedPlugin, VYRA_CALL_ERROR, StDispatchCallback::Ask::nothing);
  report(message);
}

void VYRASetErrorCallback(VYRAError_f callback) {
  // A plugin whose module is about to close must not leave a pointer into it behind.
  if (gDispatchedPlugin != VYRA_HOST_PLUGIN && !VYRARegistryIsOpen(gDispatchedPlugin)) return;
  if (VYRARegistryHolds(gDispatchedPlugin)) VYRARegistryRecord(gDispatchedPlugin).error = callback;
}

void VYRALogPluginWarning(const char* message) {
  if (!VYRARegistryHolds(gDispatchedPlugin)) {
    VYRALog("[unknown]: ", message, "\n");
    return;
  }
  // A copy: the host's log may lead to an event that moves the registry, and its record with it.
  const std::string name = VYRARegistryRecord(gDispatchedPlugin).name;
  VYRALog("[", name, "]: ", message, "\n");
}
