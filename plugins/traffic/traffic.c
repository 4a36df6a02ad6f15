/*
 * The plugin traffic: flies the AI planes itself, in a ring around the place where it took them, and draws
 * them. The command traffic/fly takes them and gives them back. A model for plugins with aircraft of their
 * own.
 */
#include <math.h>
#include <stdio.h>
#include <string.h>

#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAPlanes.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "VYRAUtilities.h"

enum { MOST_PLANES = 20, PHASE_OBJECTS = 25 };

static const double kRadius = 500.0; /* metres */
static const double kSpeed = 50.0;   /* metres per second */
static const double kHeight = 60.0;  /* metres above where the user's aircraft was */
static const double kBank = 27.0;    /* degrees: tan(bank) = speed squared / (radius * gravity) */

static const double kFullCircle = 6.283185307179586;

static struct {
  VYRADataRef userX, userY, userZ;           /* double */
  VYRADataRef x, y, z, heading, pitch, roll; /* arrays, an element for each plane, of which 0 is the user's */
} gRefs;

static int gHasPlanes;
static int gPlaneCount; /* with the user's */
static double gCentre[3];
static float gStartTime;
static float gX[MOST_PLANES], gY[MOST_PLANES], gZ[MOST_PLANES];
static float gHeading[MOST_PLANES], gPitch[MOST_PLANES], gRoll[MOST_PLANES];

static void OnError(const char* message) {
  VYRADebugString("[Traffic]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

/* North is -z, and headings go with the clock: on the ring's east side a plane flies south. */
static void Place(int plane, double now) {
  const double first = kFullCircle * (double)plane / (double)gPlaneCount;
  const double angle = first + (now - (double)gStartTime) * kSpeed / kRadius;
  gX[plane] = (float)(gCentre[0] + kRadius * sin(angle));
  gY[plane] = (float)(gCentre[1] + kHeight);
  gZ[plane] = (float)(gCentre[2] - kRadius * cos(angle));
  gHeading[plane] = (float)fmod(360.0 * angle / kFullCircle + 90.0, 360.0);
  gPitch[plane] = 0.0F;
  gRoll[plane] = (float)kBank;
}

static void Write(VYRADataRef dataRef, float* values) {
  VYRASetDatavf(dataRef, values + 1, 1, gPlaneCount - 1);
}

static float Move(float sinceLastCall, float now, int counter, void* refcon) {
  (void)sinceLastCall, (void)counter, (void)refcon;
  if (!gHasPlanes) return 0.0F; /* not again until they are taken */
  for (int plane = 1; plane < gPlaneCount; ++plane) Place(plane, (double)now);
  Write(gRefs.x, gX);
  Write(gRefs.y, gY);
  Write(gRefs.z, gZ);
  Write(gRefs.heading, gHeading);
  Write(gRefs.pitch, gPitch);
  Write(gRefs.roll, gRoll);
  return -1.0F;
}

/* Where a plugin draws a plane, the simulator does not. */
static int Draw(int phase, int isBefore, void* refcon) {
  (void)phase, (void)isBefore, (void)refcon;
  for (int plane = 1; gHasPlanes && plane < gPlaneCount; ++plane)
    VYRADrawAircraft(plane, gX[plane], gY[plane], gZ[plane], gPitch[plane], gRoll[plane], gHeading[plane], 1,
                     NULL);
  return 1;
}

static void TakePlanes(void* refcon);

static void BeginRing(void) {
  VYRACountAircraft(&gPlaneCount, NULL, NULL);
  if (gPlaneCount > MOST_PLANES) gPlaneCount = MOST_PLANES;
  gCentre[0] = VYRAGetDatad(gRefs.userX);
  gCentre[1] = VYRAGetDatad(gRefs.userY);
  gCentre[2] = VYRAGetDatad(gRefs.userZ);
  gStartTime = VYRAGetElapsedTime();
  for (int plane = 1; plane < gPlaneCount; ++plane) {
    VYRADisableAIForPlane(plane);
    Place(plane, (double)gStartTime);
  }
  VYRASetFlightLoopCallbackInterval(Move, -1.0F, 1, NULL);
}

/* When another plugin has the planes, this is called again once they are given back. */
static void TakePlanes(void* refcon) {
  (void)refcon;
  gHasPlanes = VYRAAcquirePlanes(NULL, TakePlanes, NULL);
  if (gHasPlanes) BeginRing();
  VYRADebugString(gHasPlanes ? "traffic: planes taken\n" : "traffic: waiting for the planes\n");
}

static int OnFly(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase != VYRA_COMMAND_PHASE_BEGIN) return 0;
  if (!gHasPlanes) {
    TakePlanes(NULL);
  } else {
    VYRAReleasePlanes();
    gHasPlanes = 0;
    VYRADebugString("traffic: planes given back\n");
  }
  return 0;
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Traffic");
  strcpy(outSignature, "org.skyvora.traffic");
  strcpy(outDescription, "Flies the AI planes in a ring.");
  VYRASetErrorCallback(OnError);

  gHasPlanes = 0;
  gRefs.userX = VYRAFindDataRef("sim/aircraft/x_m");
  gRefs.userY = VYRAFindDataRef("sim/aircraft/y_m");
  gRefs.userZ = VYRAFindDataRef("sim/aircraft/z_m");
  gRefs.x = VYRAFindDataRef("sim/planes/x_m");
  gRefs.y = VYRAFindDataRef("sim/planes/y_m");
  gRefs.z = VYRAFindDataRef("sim/planes/z_m");
  gRefs.heading = VYRAFindDataRef("sim/planes/heading_deg");
  gRefs.pitch = VYRAFindDataRef("sim/planes/pitch_deg");
  gRefs.roll = VYRAFindDataRef("sim/planes/roll_deg");
  VYRARegisterFlightLoopCallback(Move, 0.0F, NULL);
  VYRARegisterDrawCallback(Draw, PHASE_OBJECTS, 1, NULL);
  VYRARegisterCommandHandler(VYRACreateCommand("traffic/fly", "Fly the AI planes, or give them back"), OnFly,
                             1, NULL);
  return 1;
}

/* The library has given the planes back by now. */
void VyPluginDisable(void) { gHasPlanes = 0; }
