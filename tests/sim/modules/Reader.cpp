// A plugin that reads another one's slow dataref in frame 9, from its flight loop.
#include "LoopPlugin.h"
#include "VYRADataAccess.h"

namespace {

float Read(float /*elapsedSinceLastCall*/, float /*elapsedTime*/, int /*counter*/, void* /*refcon*/) {
  if (VYRAGetDatai(VYRAFindDataRef("sim/time/frame")) == 9) VYRAGetDatai(VYRAFindDataRef("sleeper/value"));
  return -1.0F;
}

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  return StartWithLoop(outName, outSignature, outDescription, "Reader", "org.skyvora.test.reader", Read);
}
