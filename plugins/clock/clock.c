/*
 * The plugin clock: a clock with a rate, an alarm and laps, published in datarefs of all six types and moved
 * by flight loops of each kind. See clock_interface.h for what it offers, and clock_parts.h for its window
 * and its menu.
 */
#include "clock_interface.h"

#include <stdio.h>
#include <string.h>

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "clock_parts.h"

static struct {
  double time;
  float rate;
  int passes;
  float laps[CLOCK_LAP_COUNT];
  int calls[CLOCK_LOOP_COUNT];
  char label[CLOCK_LABEL_SIZE];
} gClock;

static VYRADataRef gAlarm;
static double gAlarmTime;

/* The flight loops, as the clock counts their calls. */
enum { LOOP_TICK, LOOP_LAP, LOOP_EVERY_TENTH_PASS, LOOP_EVERY_HALF_SECOND };

static void OnError(const char* message) {
  VYRADebugString("[Clock]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

static void WriteLabel(void) {
  const int seconds = (int)gClock.time % 86400;
  snprintf(gClock.label, sizeof(gClock.label), "%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60,
           seconds % 60);
}

char* ClockLabel(void) { return gClock.label; }

double ClockSeconds(void) { return gClock.time; }

void ClockSetToZero(void) {
  gClock.time = 0.0;
  WriteLabel();
}

/* ---- Datarefs ------------------------------------------------------------------------------------------
 *
 * The library hands offset and max (or count) over as the reader (or writer) gave them. So each accessor of
 * an array first finds out how many elements from the offset on it really has.
 */

static int ElementsAt(int offset, int wanted, int total) {
  if (offset < 0 || offset >= total || wanted <= 0) return 0;
  return wanted < total - offset ? wanted : total - offset;
}

/* Null values ask for the total. The refcon of an array's accessors is its first element. */
static int ReadElements(const void* array, size_t size, int total, void* values, int offset, int max) {
  if (values == NULL) return total;
  const int count = ElementsAt(offset, max, total);
  if (count > 0) memcpy(values, (const char*)array + (size_t)offset * size, (size_t)count * size);
  return count;
}

static void WriteElements(void* array, size_t size, int total, const void* values, int offset, int count) {
  const int fitting = ElementsAt(offset, count, total);
  if (fitting > 0) memcpy((char*)array + (size_t)offset * size, values, (size_t)fitting * size);
}

static double ReadTime(void* refcon) {
  (void)refcon;
  return gClock.time;
}

static void WriteTime(void* refcon, double value) {
  (void)refcon;
  if (value >= 0.0 && value < 1e9) gClock.time = value;
}

static float ReadRate(void* refcon) {
  (void)refcon;
  return gClock.rate;
}

static void WriteRate(void* refcon, float value) {
  (void)refcon;
  if (value >= 0.0F && value <= 100.0F) gClock.rate = value;
}

static int ReadPasses(void* refcon) {
  (void)refcon;
  return gClock.passes;
}

static int ReadLaps(void* refcon, float* values, int offset, int max) {
  return ReadElements(refcon, sizeof(float), CLOCK_LAP_COUNT, values, offset, max);
}

static void WriteLaps(void* refcon, float* values, int offset, int count) {
  WriteElements(refcon, sizeof(float), CLOCK_LAP_COUNT, values, offset, count);
}

static int ReadCalls(void* refcon, int* values, int offset, int max) {
  return ReadElements(refcon, sizeof(int), CLOCK_LOOP_COUNT, values, offset, max);
}

static int ReadLabel(void* refcon, void* values, int offset, int max) {
  return ReadElements(refcon, 1, CLOCK_LABEL_SIZE, values, offset, max);
}

static void WriteLabelBytes(void* refcon, void* values, int offset, int count) {
  WriteElements(refcon, 1, CLOCK_LABEL_SIZE - 1, values, offset, count); /* the last byte stays the end */
}

static void PublishDataRefs(void) {
  VYRARegisterDataAccessor(CLOCK_TIME, VYRA_TYPE_DOUBLE, 1, NULL, NULL, NULL, NULL, ReadTime, WriteTime, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  VYRARegisterDataAccessor(CLOCK_RATE, VYRA_TYPE_FLOAT, 1, NULL, NULL, ReadRate, WriteRate, NULL, NULL, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  VYRARegisterDataAccessor(CLOCK_PASSES, VYRA_TYPE_INT, 0, ReadPasses, NULL, NULL, NULL, NULL, NULL, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  VYRARegisterDataAccessor(CLOCK_LAPS, VYRA_TYPE_FLOAT_ARRAY, 1, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
                           NULL, ReadLaps, WriteLaps, NULL, NULL, gClock.laps, gClock.laps);
  VYRARegisterDataAccessor(CLOCK_CALLS, VYRA_TYPE_INT_ARRAY, 0, NULL, NULL, NULL, NULL, NULL, NULL, ReadCalls,
                           NULL, NULL, NULL, NULL, NULL, gClock.calls, NULL);
  VYRARegisterDataAccessor(CLOCK_LABEL, VYRA_TYPE_DATA, 1, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
                           NULL, NULL, ReadLabel, WriteLabelBytes, gClock.label, gClock.label);
}

/* ---- Flight loops: what a flight loop returns says when it is called next ------------------------------ */

static void RingWhenDue(void) {
  if (gAlarmTime <= 0.0 || gClock.time < gAlarmTime) return;
  VYRASetDatad(gAlarm, 0.0); /* tells everyone who shares the alarm, the clock's own AlarmChanged too */
  VYRASendMessageToPlugin(VYRA_NO_PLUGIN, CLOCK_MESSAGE_RING, NULL);
}

static float Tick(float elapsedSinceLastCall, float elapsedTime, int counter, void* refcon) {
  (void)elapsedTime, (void)counter, (void)refcon;
  ++gClock.calls[LOOP_TICK];
  ++gClock.passes;
  gClock.time += (double)elapsedSinceLastCall * (double)gClock.rate;
  RingWhenDue();
  return -1.0F; /* the next pass of this phase */
}

static float Lap(float elapsedSinceLastCall, float elapsedTime, int counter, void* refcon) {
  (void)elapsedSinceLastCall, (void)elapsedTime, (void)counter, (void)refcon;
  ++gClock.calls[LOOP_LAP];
  memmove(gClock.laps + 1, gClock.laps, (CLOCK_LAP_COUNT - 1) * sizeof(float));
  gClock.laps[0] = (float)gClock.time;
  WriteLabel();
  return 1.0F; /* in a second */
}

/* For loops that do nothing but count: the refcon says which, and how often. */
typedef struct CountingLoop {
  int number;
  float interval;
  VYRAFlightLoopID id;
} CountingLoop;

/* Passes of both phases count, so 20 passes are ten frames. */
static CountingLoop gEveryTenthFrame = {LOOP_EVERY_TENTH_PASS, -20.0F, NULL};
static CountingLoop gEveryHalfSecond = {LOOP_EVERY_HALF_SECOND, 0.5F, NULL};
static VYRAFlightLoopID gTick;

static float CountCall(float elapsedSinceLastCall, float elapsedTime, int counter, void* refcon) {
  (void)elapsedSinceLastCall, (void)elapsedTime, (void)counter;
  const CountingLoop* const loop = refcon;
  ++gClock.calls[loop->number];
  return loop->interval;
}

static VYRAFlightLoopID CreateLoop(int phase, VYRAFlightLoop_f callback, void* refcon) {
  const VYRAFlightLoopParams params = {(int)sizeof(params), phase, callback, refcon};
  return VYRACreateFlightLoop(&params);
}

/* ---- Shared data and messages -------------------------------------------------------------------------- */

static void AlarmChanged(void* refcon) {
  (void)refcon;
  gAlarmTime = VYRAGetDatad(gAlarm);
}

void VyPluginReceiveMessage(VYRAPluginID fromPlugin, int message, void* param) {
  (void)fromPlugin;
  if (message != CLOCK_MESSAGE_ASK_TIME || param == NULL) return;
  ClockTime* const answer = param;
  answer->seconds = gClock.time;
  memcpy(answer->label, gClock.label, sizeof(answer->label));
}

/* ---- The plugin's life --------------------------------------------------------------------------------- */

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Clock");
  strcpy(outSignature, CLOCK_SIGNATURE);
  strcpy(outDescription, "A clock with a rate, laps and an alarm.");
  VYRASetErrorCallback(OnError);

  gClock.rate = 1.0F;
  WriteLabel();
  PublishDataRefs();
  VYRAShareData(CLOCK_ALARM, VYRA_TYPE_DOUBLE, AlarmChanged, NULL);
  gAlarm = VYRAFindDataRef(CLOCK_ALARM);

  /* The older way creates and schedules in one call. Of loops that are due in the same pass the one created
   * last is called first, so a lap is taken after the tick. */
  VYRARegisterFlightLoopCallback(Lap, 1.0F, NULL);
  gTick = CreateLoop(VYRA_FLIGHT_LOOP_PHASE_0, Tick, NULL);
  gEveryTenthFrame.id = CreateLoop(VYRA_FLIGHT_LOOP_PHASE_1, CountCall, &gEveryTenthFrame);
  gEveryHalfSecond.id = CreateLoop(VYRA_FLIGHT_LOOP_PHASE_1, CountCall, &gEveryHalfSecond);

  ClockCreateWindow();
  ClockCreateMenu();
  return 1;
}

int VyPluginEnable(void) {
  VYRAScheduleFlightLoop(gTick, -1.0F, 1);
  VYRAScheduleFlightLoop(gEveryTenthFrame.id, gEveryTenthFrame.interval, 1);
  VYRAScheduleFlightLoop(gEveryHalfSecond.id, gEveryHalfSecond.interval, 1);
  gAlarmTime = VYRAGetDatad(gAlarm); /* a plugin that is not enabled is not told of changes */
  return 1;
}

/* The library removes whatever a plugin that stops still has: here its datarefs, its share of the alarm,
 * the flight loops with a handle, the window, the hot key and the menu. */
void VyPluginStop(void) {
  VYRAUnregisterFlightLoopCallback(Lap, NULL);
  VYRADebugString("clock: stopped\n");
}
