/*
 * plugin.c: a plugin that writes the aircraft's altitude to the log once a second. docs/plugin-guide.md
 * goes through it.
 */
#include <VYRADataAccess.h>
#include <VYRAPlugin.h>
#include <VYRAProcessing.h>
#include <stdio.h>
#include <string.h>

static VYRADataRef gAltitude;

static float Report(float sinceLastCall, float now, int counter, void* refcon) {
  (void)sinceLastCall, (void)counter, (void)refcon;
  char line[80];
  snprintf(line, sizeof line, "%4.1f s: altitude %.0f m\n", now, VYRAGetDataf(gAltitude));
  VYRADebugString(line);
  return 1.0f; /* again in one second */
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Altitude report");
  strcpy(outSignature, "org.example.altitude-report");
  strcpy(outDescription, "Writes the altitude to the log once a second.");
  gAltitude = VYRAFindDataRef("sim/aircraft/altitude_m");
  VYRARegisterFlightLoopCallback(Report, 1.0f, NULL);
  return 1;
}
