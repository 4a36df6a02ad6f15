/*
 * The command tour/landmark puts a lighthouse on the ground below the aircraft, or takes it away: a probe
 * finds the ground, and the object is loaded in the background. Nothing waits for it: it is drawn once it is
 * there.
 */
#include <string.h>

#include "VYRADisplay.h"
#include "VYRAScenery.h"
#include "tour.h"

enum { PHASE_OBJECTS = 25, BEFORE_HOST = 0 };

static VYRAProbeRef gProbe;
static VYRAObjectRef gLighthouse;
static int gIsLoading;
static VYRADrawInfo gLocation;

static int Draw(int phase, int isBefore, void* refcon) {
  (void)phase, (void)isBefore, (void)refcon;
  if (gLighthouse != NULL) VYRADrawObjects(gLighthouse, 1, &gLocation, 0, 1);
  return 1;
}

/* Not called any more once the plugin was unloaded: the library then releases the object. */
static void OnLoaded(VYRAObjectRef object, void* refcon) {
  (void)refcon;
  gLighthouse = object;
  gIsLoading = 0;
  TourLog(object != NULL ? "lighthouse loaded" : "there is no lighthouse");
}

static void PutDown(void) {
  const TourPlace aircraft = TourAircraftPlace();
  VYRAProbeInfo ground = {.size = (int)sizeof(ground)};
  const int result =
      VYRAProbeTerrainXYZ(gProbe, (float)aircraft.x, (float)aircraft.y, (float)aircraft.z, &ground);
  if (result != VYRA_PROBE_HIT) {
    TourLog("there is no ground below");
    return;
  }
  TourLog("%s below at %.1f m", ground.isWet ? "water" : "ground", (double)ground.location[1]);
  const VYRADrawInfo location = {.size = (int)sizeof(location),
                                 .x = ground.location[0],
                                 .y = ground.location[1],
                                 .z = ground.location[2]};
  gLocation = location;
  gIsLoading = 1; /* before the call: it may come back while still in it */
  VYRALoadObjectAsync("Resources/plugins/tour/lighthouse.obj", OnLoaded, NULL);
}

static void TakeAway(void) {
  VYRAUnloadObject(gLighthouse);
  gLighthouse = NULL;
  TourLog("lighthouse taken away");
}

static int OnLandmark(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase != VYRA_COMMAND_PHASE_BEGIN) return 0;
  if (gLighthouse != NULL)
    TakeAway();
  else if (!gIsLoading)
    PutDown();
  return 0;
}

void TourStartLandmark(void) {
  gProbe = VYRACreateProbe(VYRA_PROBE_VERTICAL);
  VYRARegisterDrawCallback(Draw, PHASE_OBJECTS, BEFORE_HOST, NULL);
  TourAddCommand("tour/landmark", "Put a lighthouse below the aircraft, or take it away", OnLandmark);
}
