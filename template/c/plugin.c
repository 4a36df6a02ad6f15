/*
 * A stopwatch that starts with the plugin. It publishes the dataref "stopwatch/flown_s", makes the command
 * "stopwatch/reset", and writes how high the aircraft came to the log. Replace what it does; keep what every
 * plugin needs: the three names, the error callback, and state that is set up in VyPluginStart.
 */
#include <VYRADataAccess.h>
#include <VYRAPlugin.h>
#include <VYRAProcessing.h>
#include <VYRAUtilities.h>
#include <stdio.h>
#include <string.h>

static VYRADataRef gAltitude; /* of the simulator */
static float gStart;
static float gFlown;
static float gHighest;

/* Hears of every wrong call that this plugin makes. The message has no line end. */
static void OnError(const char* message) {
  VYRADebugString("stopwatch: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

static float ReadFlown(void* refcon) {
  (void)refcon;
  return gFlown;
}

/* Called in each frame, as it returns -1; 2.0f would be two seconds later. */
static float Measure(float sinceLastCall, float now, int counter, void* refcon) {
  (void)sinceLastCall, (void)counter, (void)refcon;
  const float altitude = VYRAGetDataf(gAltitude);
  if (altitude > gHighest) gHighest = altitude;
  gFlown = now - gStart;
  return -1.0f;
}

static int Reset(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase != VYRA_COMMAND_PHASE_BEGIN) return 1;
  char line[80];
  snprintf(line, sizeof line, "stopwatch: %.1f s flown, at most %.0f m high\n", gFlown, gHighest);
  VYRADebugString(line);
  gStart = VYRAGetElapsedTime();
  gFlown = gHighest = 0.0f;
  return 1;
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Stopwatch");
  strcpy(outSignature, "org.example.stopwatch"); /* yours alone: begin with a domain of yours, backwards */
  strcpy(outDescription, "Measures how long a flight lasts.");
  VYRASetErrorCallback(OnError);

  gStart = VYRAGetElapsedTime();
  gFlown = gHighest = 0.0f;
  gAltitude = VYRAFindDataRef("sim/aircraft/altitude_m");
  VYRARegisterDataAccessor("stopwatch/flown_s", VYRA_TYPE_FLOAT, 0, NULL, NULL, ReadFlown, NULL, NULL, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  VYRARegisterFlightLoopCallback(Measure, -1.0f, NULL);
  VYRARegisterCommandHandler(VYRACreateCommand("stopwatch/reset", "Start the stopwatch anew"), Reset, 1,
                             NULL);
  return 1;
}
