/*
 * The plugin terrain: warns of ground that the aircraft will fly into, and leaves beacons on the ground
 * behind it from the command terrain/beacons on. A model for plugins that probe the ground and draw objects.
 */
#include <stdio.h>
#include <string.h>

#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAGraphics.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "VYRAScenery.h"
#include "VYRAUtilities.h"

enum { MOST_BEACONS = 16, LOOKS = 8, PHASE_OBJECTS = 25, PHASE_SCREEN = 50, FONT = 0 };

static const float kLookAhead = 16.0F;  /* seconds of flight */
static const float kSafeHeight = 50.0F; /* metres above the ground */
static const float kBeaconInterval = 1.0F;
static const float kNoGround = 1e6F;

static struct {
  VYRADataRef x, y, z; /* double */
  VYRADataRef east, north, climb;
} gRefs;

static VYRAProbeRef gProbe;
static float gClearance; /* metres: the least height above the ground on the way ahead */
static int gIsWarning;
static VYRAObjectRef gBeacon; /* null until it is loaded */
static VYRADrawInfo gBeacons[MOST_BEACONS];
static int gBeaconCount;
static int gLeavesBeacons;

static void OnError(const char* message) {
  VYRADebugString("[Terrain]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

/* The height of a point above the ground, and the ground below it. */
static float Probe(float x, float y, float z, VYRAProbeInfo* outGround) {
  const VYRAProbeInfo empty = {.size = (int)sizeof(empty)};
  *outGround = empty;
  if (VYRAProbeTerrainXYZ(gProbe, x, y, z, outGround) != VYRA_PROBE_HIT) return kNoGround;
  return y - outGround->location[1];
}

static void Warn(void) {
  char text[] = "Terrain ahead";
  VYRASpeakString(text);
  VYRADebugString("terrain: warned\n");
}

/* Looks along the way that the aircraft takes when it goes on as it does. */
static float Look(float sinceLastCall, float now, int counter, void* refcon) {
  (void)sinceLastCall, (void)now, (void)counter, (void)refcon;
  const float x = (float)VYRAGetDatad(gRefs.x);
  const float y = (float)VYRAGetDatad(gRefs.y);
  const float z = (float)VYRAGetDatad(gRefs.z);
  gClearance = kNoGround;
  for (int look = 0; look <= LOOKS; ++look) {
    const float seconds = kLookAhead * (float)look / (float)LOOKS;
    VYRAProbeInfo ground;
    const float height =
        Probe(x + VYRAGetDataf(gRefs.east) * seconds, y + VYRAGetDataf(gRefs.climb) * seconds,
              z - VYRAGetDataf(gRefs.north) * seconds, &ground); /* z points south */
    if (height < gClearance) gClearance = height;
  }
  const int wasWarning = gIsWarning;
  gIsWarning = gClearance < kSafeHeight;
  if (gIsWarning && !wasWarning) Warn();
  return 0.1F;
}

static float LeaveBeacon(float sinceLastCall, float now, int counter, void* refcon) {
  (void)sinceLastCall, (void)now, (void)counter, (void)refcon;
  if (!gLeavesBeacons || gBeaconCount == MOST_BEACONS) return 0.0F;
  VYRAProbeInfo ground;
  const float height = Probe((float)VYRAGetDatad(gRefs.x), (float)VYRAGetDatad(gRefs.y),
                             (float)VYRAGetDatad(gRefs.z), &ground);
  if (height < kNoGround) {
    const VYRADrawInfo place = {.size = (int)sizeof(place),
                                .x = ground.location[0],
                                .y = ground.location[1],
                                .z = ground.location[2]};
    gBeacons[gBeaconCount++] = place;
  }
  return kBeaconInterval;
}

static int DrawBeacons(int phase, int isBefore, void* refcon) {
  (void)phase, (void)isBefore, (void)refcon;
  if (gBeacon != NULL) VYRADrawObjects(gBeacon, gBeaconCount, gBeacons, 0, 1);
  return 1;
}

static int DrawWarning(int phase, int isBefore, void* refcon) {
  (void)phase, (void)isBefore, (void)refcon;
  if (!gIsWarning) return 1;
  int width = 0, height = 0;
  VYRAGetScreenSize(&width, &height);
  float red[3] = {1.0F, 0.2F, 0.1F};
  char text[] = "TERRAIN";
  const float textWidth = VYRAMeasureString(FONT, text, (int)strlen(text));
  VYRADrawString(red, (width - (int)textWidth) / 2, height * 2 / 3, text, NULL, FONT);
  return 1;
}

/* Not called any more once the plugin was unloaded: the library then releases the object. */
static void OnLoaded(VYRAObjectRef object, void* refcon) {
  (void)refcon;
  gBeacon = object;
  if (object == NULL) VYRADebugString("terrain: there is no beacon.obj\n");
}

/* The beacon lies in this plugin's folder, whatever that is called: beside the folder of its module. */
static void LoadBeacon(void) {
  char module[VYRA_PLUGIN_INFO_SIZE] = "";
  VYRAGetPluginInfo(VYRAGetMyID(), NULL, module, NULL, NULL);
  VYRAExtractFileAndPath(module); /* leaves .../64 */
  VYRAExtractFileAndPath(module);
  char path[VYRA_PLUGIN_INFO_SIZE + 16];
  snprintf(path, sizeof(path), "%s/beacon.obj", module);
  VYRALoadObjectAsync(path, OnLoaded, NULL);
}

static int OnBeacons(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase != VYRA_COMMAND_PHASE_BEGIN) return 0;
  gLeavesBeacons = !gLeavesBeacons;
  VYRASetFlightLoopCallbackInterval(LeaveBeacon, -1.0F, 1, NULL);
  return 0;
}

static float ReadClearance(void* refcon) {
  (void)refcon;
  return gClearance;
}

static int ReadBeacons(void* refcon) {
  (void)refcon;
  return gBeaconCount;
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Terrain");
  strcpy(outSignature, "org.skyvora.terrain");
  strcpy(outDescription, "Warns of the ground, and leaves beacons on it.");
  VYRASetErrorCallback(OnError);

  gBeacon = NULL;
  gIsWarning = gLeavesBeacons = gBeaconCount = 0;
  gClearance = kNoGround;
  gProbe = VYRACreateProbe(VYRA_PROBE_VERTICAL);
  gRefs.x = VYRAFindDataRef("sim/aircraft/x_m");
  gRefs.y = VYRAFindDataRef("sim/aircraft/y_m");
  gRefs.z = VYRAFindDataRef("sim/aircraft/z_m");
  gRefs.east = VYRAFindDataRef("sim/aircraft/east_m_per_s");
  gRefs.north = VYRAFindDataRef("sim/aircraft/north_m_per_s");
  gRefs.climb = VYRAFindDataRef("sim/aircraft/climb_m_per_s");
  VYRARegisterDataAccessor("terrain/clearance_m", VYRA_TYPE_FLOAT, 0, NULL, NULL, ReadClearance, NULL, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  VYRARegisterDataAccessor("terrain/beacons", VYRA_TYPE_INT, 0, ReadBeacons, NULL, NULL, NULL, NULL, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  VYRARegisterFlightLoopCallback(Look, -1.0F, NULL);
  VYRARegisterFlightLoopCallback(LeaveBeacon, 0.0F, NULL);
  VYRARegisterDrawCallback(DrawBeacons, PHASE_OBJECTS, 1, NULL);
  VYRARegisterDrawCallback(DrawWarning, PHASE_SCREEN, 0, NULL);
  VYRARegisterCommandHandler(VYRACreateCommand("terrain/beacons", "Leave beacons behind, or no more of them"),
                             OnBeacons, 1, NULL);
  return 1;
}

int VyPluginEnable(void) {
  if (gBeacon == NULL) LoadBeacon();
  return 1;
}
