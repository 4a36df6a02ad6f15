// A plugin whose flight loop throws at its fifth call.
#include <stdexcept>

#include "LoopPlugin.h"

namespace {

int gCalls = 0;

float Throw(float /*elapsedSinceLastCall*/, float /*elapsedTime*/, int /*counter*/, void* /*refcon*/) {
  if (++gCalls == 5) throw std::runtime_error("thrown on purpose");
  return -1.0F;
}

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  return StartWithLoop(outName, outSignature, outDescription, "Thrower", "org.skyvora.test.thrower", Throw);
}

VYRA_PLUGIN_EXPORT void VyPluginStop() { VYRADebugString("thrower: stopped\n"); }
