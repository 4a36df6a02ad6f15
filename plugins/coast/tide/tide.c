/*
 * The tide of the scenery package Coast. A plugin of a scenery package is enabled as soon as the package is
 * loaded, and stays until all plugins are unloaded.
 */
#include <math.h>
#include <string.h>

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

static const double kHighWater = 1.5;                 /* metres */
static const double kSecondsFromHighToHigh = 44712.0; /* 12 hours and 25 minutes */

static void OnError(const char* message) {
  VYRADebugString("[Coast tide]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

static double ReadTide(void* refcon) {
  (void)refcon;
  return kHighWater * cos(6.283185307179586 * (double)VYRAGetElapsedTime() / kSecondsFromHighToHigh);
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Coast tide");
  strcpy(outSignature, "org.skyvora.coast.tide");
  strcpy(outDescription, "Height of the sea along the coast.");
  VYRASetErrorCallback(OnError);
  /* Worked out when somebody reads it: there is nothing to do in between, so no flight loop. */
  VYRARegisterDataAccessor("coast/tide_m", VYRA_TYPE_DOUBLE, 0, NULL, NULL, NULL, NULL, ReadTide, NULL, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  return 1;
}

void VyPluginStop(void) { VYRADebugString("tide: stopped\n"); }
