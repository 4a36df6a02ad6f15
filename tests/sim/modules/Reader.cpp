// A plugin that reads another one's slow dataref in frame 9, from its flight loop.
#include <cstring>

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

namespace {

float Read(float /*elapsedSinceLastCall*/, float /*elapsedTime*/, int /*counter*/, void* /*refcon*/) {
  if (VYRAGetDatai(VYRAFindDataRef("sim/time/frame")) == 9) VYRAGetDatai(VYRAFindDataRef("sleeper/value"));
  return -1.0F;
}

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "Reader");
  std::strcpy(outSignature, "org.skyvora.test.reader");
  std::strcpy(outDescription, "Reads what is slow to read.");
  VYRARegisterFlightLoopCallback(Read, -1.0F, nullptr);
  return 1;
}
