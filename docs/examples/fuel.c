/*
 * fuel.c: a plugin with a bug, which the environment variable FUEL_BUG chooses. docs/find-the-plugin.md
 * and docs/debugging.md find it.
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

static void Overfill(void) {
  double* const tanks = malloc(4 * sizeof(double));
  for (int tank = 0; tank <= 4; ++tank) tanks[tank] = 100.0;
  gTank = tanks;
}

static void Spill(void) {
  gTank = malloc(1000);
  gTank = NULL; /* nobody can free it any more */
}

static float BurnInFlight(float sinceLastCall, float now, int counter, void* refcon) {
  (void)sinceLastCall, (void)now, (void)counter, (void)refcon;
  if (HasBug("crash")) Burn(0.1);
  if (HasBug("hang")) WaitForPump();
  if (HasBug("quit")) exit(0);
  if (HasBug("overflow")) Overfill();
  if (HasBug("leak")) Spill();
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
