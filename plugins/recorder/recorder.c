/*
 * The plugin recorder: writes the flight to flight-recorder.csv in the simulator's folder, five rows a
 * second, from the command recorder/record on until it is given again. A model for plugins that only watch.
 */
#include <stdio.h>
#include <string.h>

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "VYRAUtilities.h"

static const float kInterval = 0.2F; /* seconds from row to row */

/* A column is a dataref, named in the file as it is here. */
static struct {
  const char* name;
  int decimals;
  VYRADataRef dataRef;
} gColumns[] = {
    {"sim/time/elapsed_s", 2, NULL},         {"sim/aircraft/latitude_deg", 6, NULL},
    {"sim/aircraft/longitude_deg", 6, NULL}, {"sim/aircraft/altitude_m", 1, NULL},
    {"sim/aircraft/heading_deg", 1, NULL},   {"sim/aircraft/pitch_deg", 1, NULL},
    {"sim/aircraft/roll_deg", 1, NULL},      {"sim/aircraft/speed_m_per_s", 1, NULL},
    {"sim/aircraft/climb_m_per_s", 1, NULL}, {"sim/aircraft/throttle_ratio", 2, NULL},
};
enum { COLUMN_COUNT = sizeof(gColumns) / sizeof(gColumns[0]) };

static FILE* gFile; /* null while nothing is recorded */
static char gPath[VYRA_PATH_SIZE + 32];
static int gRows;
static VYRAFlightLoopID gLoop;

static void OnError(const char* message) {
  VYRADebugString("[Recorder]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

/* A dataref has a type, and reading it as another gives 0. */
static double Read(VYRADataRef dataRef) {
  const VYRADataTypeID types = VYRAGetDataRefTypes(dataRef);
  if ((types & VYRA_TYPE_DOUBLE) != 0) return VYRAGetDatad(dataRef);
  if ((types & VYRA_TYPE_FLOAT) != 0) return (double)VYRAGetDataf(dataRef);
  return (double)VYRAGetDatai(dataRef);
}

static void WriteTitles(void) {
  for (int column = 0; column < COLUMN_COUNT; ++column)
    fprintf(gFile, "%s%s", column == 0 ? "" : ",", gColumns[column].name);
  fputc('\n', gFile);
}

static float WriteRow(float sinceLastCall, float now, int counter, void* refcon) {
  (void)sinceLastCall, (void)now, (void)counter, (void)refcon;
  if (gFile == NULL) return 0.0F; /* not again until recording starts */
  for (int column = 0; column < COLUMN_COUNT; ++column)
    fprintf(gFile, "%s%.*f", column == 0 ? "" : ",", gColumns[column].decimals,
            Read(gColumns[column].dataRef));
  fputc('\n', gFile);
  ++gRows;
  return kInterval;
}

static void StartRecording(void) {
  gFile = fopen(gPath, "w");
  if (gFile == NULL) {
    VYRADebugString("recorder: cannot write flight-recorder.csv\n");
    return;
  }
  gRows = 0;
  WriteTitles();
  VYRAScheduleFlightLoop(gLoop, -1.0F, 1);
}

static void StopRecording(void) {
  if (gFile == NULL) return;
  const int isWritten = fclose(gFile) == 0;
  gFile = NULL;
  char line[80];
  snprintf(line, sizeof(line), "recorder: %d rows %s\n", gRows,
           isWritten ? "written" : "could not be written");
  VYRADebugString(line);
}

static int OnRecord(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase != VYRA_COMMAND_PHASE_BEGIN) return 0;
  if (gFile == NULL)
    StartRecording();
  else
    StopRecording();
  return 0; /* nobody else has to act on it */
}

static int ReadRows(void* refcon) {
  (void)refcon;
  return gRows;
}

static int ReadIsRecording(void* refcon) {
  (void)refcon;
  return gFile != NULL;
}

static void Publish(const char* name, VYRAReadInt_f read) {
  VYRARegisterDataAccessor(name, VYRA_TYPE_INT, 0, read, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
                           NULL, NULL, NULL, NULL);
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Recorder");
  strcpy(outSignature, "org.skyvora.recorder");
  strcpy(outDescription, "Writes the flight to a table.");
  VYRASetErrorCallback(OnError);

  gFile = NULL;
  gRows = 0;
  VYRAGetSystemPath(gPath);
  strcat(gPath, "flight-recorder.csv"); /* for which gPath has room */
  for (int column = 0; column < COLUMN_COUNT; ++column)
    gColumns[column].dataRef = VYRAFindDataRef(gColumns[column].name);
  Publish("recorder/rows", ReadRows);
  Publish("recorder/is_recording", ReadIsRecording);
  const VYRAFlightLoopParams params = {
      .structSize = (int)sizeof(params), .phase = VYRA_FLIGHT_LOOP_PHASE_1, .callback = WriteRow};
  gLoop = VYRACreateFlightLoop(&params);
  VYRARegisterCommandHandler(VYRACreateCommand("recorder/record", "Record the flight, or stop recording it"),
                             OnRecord, 1, NULL);
  return 1;
}

/* A disabled plugin is not called, so the file would end in the middle of a row. */
void VyPluginDisable(void) { StopRecording(); }
