/*
 * The plugin flyby: the camera stands beside the aircraft's way, follows it with its look as it passes, and
 * goes on to wait farther ahead. The command flyby/look starts and ends it. A model for plugins that take the
 * camera.
 */
#include <math.h>
#include <string.h>

#include "VYRACamera.h"
#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAScenery.h"
#include "VYRAUtilities.h"

static const double kAhead = 200.0;    /* metres on the aircraft's way */
static const double kBeside = 30.0;    /* and to the right of it */
static const double kFarthest = 250.0; /* from where the camera goes on to the next place */
static const double kEyeHeight = 2.0;  /* metres that the camera stays above the ground */
static const double kDegrees = 57.29577951308232;

static struct {
  VYRADataRef x, y, z; /* double, local metres */
  VYRADataRef track;
} gRefs;

static VYRAProbeRef gProbe;
static double gStand[3]; /* where the camera stands */
static int gHasCamera;
static int gStands; /* places so far */

static void OnError(const char* message) {
  VYRADebugString("[Flyby]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

/* x points east, y up and z south. */
static void GoAhead(const double* aircraft) {
  const double track = (double)VYRAGetDataf(gRefs.track) / kDegrees;
  gStand[0] = aircraft[0] + kAhead * sin(track) + kBeside * cos(track);
  gStand[1] = aircraft[1];
  gStand[2] = aircraft[2] - kAhead * cos(track) + kBeside * sin(track);
  VYRAProbeInfo ground = {.size = (int)sizeof(ground)};
  if (VYRAProbeTerrainXYZ(gProbe, (float)gStand[0], (float)gStand[1], (float)gStand[2], &ground) ==
      VYRA_PROBE_HIT)
    gStand[1] = fmax(gStand[1], (double)ground.location[1] + kEyeHeight);
  ++gStands;
}

/* Asked once in each frame. */
static int Control(VYRACameraPosition* position, int isLosingControl, void* refcon) {
  (void)refcon;
  if (isLosingControl) {
    gHasCamera = 0;
    VYRADebugString("flyby: the camera was taken away\n");
    return 0;
  }
  const double aircraft[3] = {VYRAGetDatad(gRefs.x), VYRAGetDatad(gRefs.y), VYRAGetDatad(gRefs.z)};
  const double east = aircraft[0] - gStand[0];
  const double up = aircraft[1] - gStand[1];
  const double south = aircraft[2] - gStand[2];
  const double level = hypot(east, south);
  if (level > kFarthest) {
    GoAhead(aircraft);
    return Control(position, 0, refcon);
  }
  position->x = (float)gStand[0];
  position->y = (float)gStand[1];
  position->z = (float)gStand[2];
  position->heading = (float)fmod(atan2(east, -south) * kDegrees + 360.0, 360.0);
  position->pitch = (float)(atan2(up, level) * kDegrees);
  position->roll = 0.0F;
  position->zoom = 1.0F;
  return 1;
}

static int OnLook(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase != VYRA_COMMAND_PHASE_BEGIN) return 0;
  if (gHasCamera && VYRAIsCameraBeingControlled(NULL)) {
    VYRADontControlCamera(); /* of which this plugin is not told */
    gHasCamera = 0;
    return 0;
  }
  const double aircraft[3] = {VYRAGetDatad(gRefs.x), VYRAGetDatad(gRefs.y), VYRAGetDatad(gRefs.z)};
  GoAhead(aircraft);
  gHasCamera = 1;
  VYRAControlCamera(VYRA_CAMERA_UNTIL_VIEW_CHANGES, Control, NULL);
  return 0;
}

static int ReadStands(void* refcon) {
  (void)refcon;
  return gStands;
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Flyby");
  strcpy(outSignature, "org.skyvora.flyby");
  strcpy(outDescription, "Watches the aircraft pass.");
  VYRASetErrorCallback(OnError);

  gHasCamera = gStands = 0;
  gProbe = VYRACreateProbe(VYRA_PROBE_VERTICAL);
  gRefs.x = VYRAFindDataRef("sim/aircraft/x_m");
  gRefs.y = VYRAFindDataRef("sim/aircraft/y_m");
  gRefs.z = VYRAFindDataRef("sim/aircraft/z_m");
  gRefs.track = VYRAFindDataRef("sim/aircraft/track_deg");
  VYRARegisterDataAccessor("flyby/stands", VYRA_TYPE_INT, 0, ReadStands, NULL, NULL, NULL, NULL, NULL, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  VYRARegisterCommandHandler(VYRACreateCommand("flyby/look", "Watch the aircraft pass, or no longer"), OnLook,
                             1, NULL);
  return 1;
}
