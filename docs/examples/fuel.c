/*
 * fuel.c: a plugin with a bug, which the environment variable FUEL_BUG chooses. docs/find-the-plugin.md
 * finds it.
 */
#include <VYRAPlugin.h>
#include <VYRAProcessing.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static double* gTank; /* nobody fills it */
static volatile int gPumpRuns;

static int HasBug(const char* bug) {
  const char* const chosen = getenv("FUEL_BUG");
  return chosen != NULL && strcmp(chosen, bug) == 0;
}

static void Burn(double litres) { *gTank -= litres; }

static void WaitForPump(void) {
  while (!gPumpRuns) usleep(1000);
}

static float BurnInFlight(float sinceLastCall, float now, int counter, void* refcon) {
  (void)sinceLastCall, (void)now, (void)counter, (void)refcon;
  if (HasBug("crash")) Burn(0.1);
  if (HasBug("hang")) WaitForPump();
  if (HasBug("quit")) exit(0);
  return 1.0F; /* again in one second */
}

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Fuel");
  strcpy(outSignature, "org.example.fuel");
  strcpy(outDescription, "Burns fuel.");
  VYRARegisterFlightLoopCallback(BurnInFlight, 1.0F, NULL);
  return 1;
}

VYRA_PLUGIN_EXPORT void VyPluginStop(void) {}
