// A library that can be loaded but lacks the one function that makes it a plugin. What its constructor
// registers must be gone with it all the same.
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

namespace {

float FlightLoop(float, float, int, void*) { return -1; }

class GlobalObject {
 public:
  GlobalObject() { VYRARegisterFlightLoopCallback(FlightLoop, -1, nullptr); }
} gGlobalObject;

}  // namespace

VYRA_PLUGIN_EXPORT void VyPluginStop(void) {}
VYRA_PLUGIN_EXPORT int VyPluginEnable(void) { return 1; }
VYRA_PLUGIN_EXPORT void VyPluginDisable(void) {}
VYRA_PLUGIN_EXPORT void VyPluginReceiveMessage(VYRAPluginID, int, void*) {}
