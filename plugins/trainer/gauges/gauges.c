/*
 * The gauges of the Trainer, a plugin of the aircraft: loaded with it, stopped with it. Burns fuel as the
 * throttle says and publishes what is left.
 */
#include <string.h>

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

static const double kBurnAtFullThrottle = 0.008; /* kilograms per second */

static VYRADataRef gThrottle;
static VYRAFlightLoopID gBurn;
static double gFuel = 80.0;

static void OnError(const char* message) {
  VYRADebugString("[Trainer gauges]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

static double ReadFuel(void* refcon) {
  (void)refcon;
  return gFuel;
}

static float Burn(float elapsedSinceLastCall, float elapsedTime, int counter, void* refcon) {
  (void)elapsedTime, (void)counter, (void)refcon;
  gFuel -= kBurnAtFullThrottle * (double)VYRAGetDataf(gThrottle) * (double)elapsedSinceLastCall;
  return gFuel > 0.0 ? 0.1F : 0.0F; /* an empty tank needs no more calls */
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Trainer gauges");
  strcpy(outSignature, "org.skyvora.trainer.gauges");
  strcpy(outDescription, "Fuel of the Trainer.");
  VYRASetErrorCallback(OnError);
  gThrottle = VYRAFindDataRef("sim/aircraft/throttle_ratio"); /* the simulator's own are always there */
  VYRARegisterDataAccessor("trainer/fuel_kg", VYRA_TYPE_DOUBLE, 0, NULL, NULL, NULL, NULL, ReadFuel, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  const VYRAFlightLoopParams params = {(int)sizeof(params), VYRA_FLIGHT_LOOP_PHASE_0, Burn, NULL};
  gBurn = VYRACreateFlightLoop(&params);
  return 1;
}

int VyPluginEnable(void) {
  VYRAScheduleFlightLoop(gBurn, 0.1F, 1);
  return 1;
}

void VyPluginStop(void) { VYRADebugString("gauges: stopped\n"); }
