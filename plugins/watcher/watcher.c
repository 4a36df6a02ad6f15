/*
 * The plugin watcher: reads the clock's datarefs, sets its alarm through the shared value, asks it for the
 * time, and notes in the log what it learns. Told to by the simulator, it asks for a reload of all plugins.
 */
#include <stdio.h>
#include <string.h>

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "clock_interface.h"

/* The simulator's message to this plugin: reload all plugins. Each message asks for one reload. */
enum { WATCHER_MESSAGE_RELOAD = 2001 };

static const double kAlarmDelay = 3.0;     /* seconds on the clock */
static const float kReportInterval = 2.0F; /* seconds */

/* Handles, looked up once: a look-up costs a search, a read through a handle does not. */
static struct { VYRADataRef time, rate, passes, laps, calls, label, alarm; } gHandles;

static VYRAFlightLoopID gReport;
static int gRings;

static void OnError(const char* message) {
  VYRADebugString("[Watcher]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

static void LookUp(void) {
  gHandles.time = VYRAFindDataRef(CLOCK_TIME);
  gHandles.rate = VYRAFindDataRef(CLOCK_RATE);
  gHandles.passes = VYRAFindDataRef(CLOCK_PASSES);
  gHandles.laps = VYRAFindDataRef(CLOCK_LAPS);
  gHandles.calls = VYRAFindDataRef(CLOCK_CALLS);
  gHandles.label = VYRAFindDataRef(CLOCK_LABEL);
}

static void ReportDataRefs(void) {
  float laps[CLOCK_LAP_COUNT] = {0};
  int calls[CLOCK_LOOP_COUNT] = {0};
  char label[CLOCK_LABEL_SIZE + 1] = "";
  const int lapCount = VYRAGetDatavf(gHandles.laps, NULL, 0, 0); /* null asks how many there are */
  VYRAGetDatavf(gHandles.laps, laps, 0, CLOCK_LAP_COUNT);
  VYRAGetDatavi(gHandles.calls, calls, 0, CLOCK_LOOP_COUNT);
  VYRAGetDatab(gHandles.label, label, 0, CLOCK_LABEL_SIZE);
  char line[256];
  snprintf(
      line, sizeof(line),
      "watcher: clock %.2f s, rate %.1f, %d passes, last of %d laps %.2f s, calls %d %d %d %d, label %s\n",
      VYRAGetDatad(gHandles.time), (double)VYRAGetDataf(gHandles.rate), VYRAGetDatai(gHandles.passes),
      lapCount, (double)laps[0], calls[0], calls[1], calls[2], calls[3], label);
  VYRADebugString(line);
}

/* A message's param is whatever sender and receiver agree on. It may point to a local variable, because
 * the receiver has returned when the call returns. */
static void AskClock(void) {
  const VYRAPluginID clock = VYRAFindPluginBySignature(CLOCK_SIGNATURE);
  if (clock == VYRA_NO_PLUGIN) return;
  ClockTime answer = {-1.0, ""};
  VYRASendMessageToPlugin(clock, CLOCK_MESSAGE_ASK_TIME, &answer);
  char line[128];
  snprintf(line, sizeof(line), "watcher: asked at the ring, the clock says %.2f s\n", answer.seconds);
  VYRADebugString(line);
}

static float Report(float elapsedSinceLastCall, float elapsedTime, int counter, void* refcon) {
  (void)elapsedSinceLastCall, (void)elapsedTime, (void)counter, (void)refcon;
  if (gHandles.time == NULL) { /* not at the start: the clock may be loaded after this plugin */
    LookUp();
    if (gHandles.time == NULL) return kReportInterval; /* nobody published a clock yet */
    VYRASetDatad(gHandles.alarm, VYRAGetDatad(gHandles.time) + kAlarmDelay);
  }
  ReportDataRefs();
  return kReportInterval;
}

static void AlarmChanged(void* refcon) {
  (void)refcon;
  char line[128];
  snprintf(line, sizeof(line), "watcher: the alarm is now at %.2f s\n", VYRAGetDatad(gHandles.alarm));
  VYRADebugString(line);
}

static int ReadRings(void* refcon) {
  (void)refcon;
  return gRings;
}

static void NoteHostMessage(int message, void* param) {
  const int isOfPlane = message == VYRA_MESSAGE_PLANE_LOADED || message == VYRA_MESSAGE_PLANE_UNLOADED;
  char line[64];
  if (isOfPlane)
    snprintf(line, sizeof(line), "watcher: host message %d, plane %d\n", message, (int)(intptr_t)param);
  else
    snprintf(line, sizeof(line), "watcher: host message %d\n", message);
  VYRADebugString(line);
}

void VyPluginReceiveMessage(VYRAPluginID fromPlugin, int message, void* param) {
  if (message == CLOCK_MESSAGE_RING) {
    ++gRings;
    AskClock();
  } else if (message == WATCHER_MESSAGE_RELOAD && fromPlugin == VYRA_HOST_PLUGIN) {
    VYRADebugString("watcher: asking for a reload\n");
    VYRAReloadPlugins();
  } else if (message >= VYRA_MESSAGE_HOST_101 && message <= VYRA_MESSAGE_HOST_108) {
    NoteHostMessage(message, param);
  }
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Watcher");
  strcpy(outSignature, "org.skyvora.watcher");
  strcpy(outDescription, "Reads the clock and notes what it learns.");
  VYRASetErrorCallback(OnError);

  /* Whoever shares an item first creates it, so its dataref is there in any order of loading. */
  VYRAShareData(CLOCK_ALARM, VYRA_TYPE_DOUBLE, AlarmChanged, NULL);
  gHandles.alarm = VYRAFindDataRef(CLOCK_ALARM);
  VYRARegisterDataAccessor("watcher/rings", VYRA_TYPE_INT, 0, ReadRings, NULL, NULL, NULL, NULL, NULL, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  const VYRAFlightLoopParams params = {(int)sizeof(params), VYRA_FLIGHT_LOOP_PHASE_1, Report, NULL};
  gReport = VYRACreateFlightLoop(&params);
  return 1;
}

int VyPluginEnable(void) {
  VYRAScheduleFlightLoop(gReport, -1.0F, 1);
  return 1;
}

void VyPluginStop(void) { VYRADebugString("watcher: stopped\n"); }
