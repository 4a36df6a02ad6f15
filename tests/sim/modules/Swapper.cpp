// A plugin that, in its fifth flight loop, puts one file in the place of another, once: as a build would that
// ends during a flight. Which files, the environment says.
#include <cstdio>
#include <cstdlib>

#include "LoopPlugin.h"

namespace {

int gCalls = 0;

float Swap(float /*elapsedSinceLastCall*/, float /*elapsedTime*/, int /*counter*/, void* /*refcon*/) {
  const char* const file = std::getenv("VYRA_TEST_NEW_FILE");
  const char* const place = std::getenv("VYRA_TEST_OLD_FILE");
  // The second time there is no such file any more.
  if (++gCalls == 5 && file != nullptr && place != nullptr) std::rename(file, place);
  return -1.0F;
}

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  return StartWithLoop(outName, outSignature, outDescription, "Swapper", "org.skyvora.test.swapper", Swap);
}
