// A plugin whose flight loop throws at its fifth call.
#include <cstring>
#include <stdexcept>

#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

namespace {

int gCalls = 0;

float Throw(float /*elapsedSinceLastCall*/, float /*elapsedTime*/, int /*counter*/, void* /*refcon*/) {
  if (++gCalls == 5) throw std::runtime_error("thrown on purpose");
  return -1.0F;
}

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "Thrower");
  std::strcpy(outSignature, "org.skyvora.test.thrower");
  std::strcpy(outDescription, "Throws from a flight loop.");
  VYRARegisterFlightLoopCallback(Throw, -1.0F, nullptr);
  return 1;
}

VYRA_PLUGIN_EXPORT void VyPluginStop() { VYRADebugString("thrower: stopped\n"); }
