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

namespace {

// An error callback that misuses the interface each time would call itself until the stack is full.
constexpr int kMostNestedReports = 4;
int gReports = 0;  // on the stack

class StReport {
 public:
  StReport() { ++gReports; }
  ~StReport() { --gReports; }
  StReport(const StReport&) = delete;
  StReport& operator=(const StReport&) = delete;
};

}  // namespace

bool VYRAHasError() {
  return gReports < kMostNestedReports && VYRARegistryHolds(gDispatchedPlugin) &&
         VYRARegistryRecord(gDispatchedPlugin).error != nullptr;
}

void VYRASendError(const char* message) {
  if (!VYRAHasError()) return;
  const auto report = VYRARegistryRecord(gDispatchedPlugin).error;
  const StDispatchCallback dispatch(gDispatchedPlugin, VYRA_CALL_ERROR, StDispatchCallback::Ask::nothing);
  const StReport reporting;
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
