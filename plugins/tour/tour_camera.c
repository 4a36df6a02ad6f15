/*
 * The camera circles the aircraft for a while, from the command tour/circle on. Each pass for which the
 * command tour/zoom_in is held brings it nearer.
 */
#include <math.h>
#include <stddef.h>

#include "VYRACamera.h"
#include "VYRAProcessing.h"
#include "tour.h"

static const float kRoundTime = 2.0F;      /* seconds: one round, and the camera is given back */
static const double kRadius = 80.0;        /* metres around the aircraft */
static const double kHeight = 20.0;        /* and above it */
static const float kPassesPerZoom = 10.0F; /* of the command, until all is twice as large */

static float gStartTime;
static int gZoomPasses;
static int gPassesHeld; /* of this press */

static int Circle(VYRACameraPosition* position, int isLosingControl, void* refcon) {
  (void)refcon;
  if (isLosingControl) {
    TourLog("camera lost");
    return 0;
  }
  const float part = (VYRAGetElapsedTime() - gStartTime) / kRoundTime;
  if (part >= 1.0F) {
    TourLog("camera given back");
    return 0;
  }
  const TourPlace aircraft = TourAircraftPlace();
  const double angle = 6.283185307179586 * (double)part;
  position->x = (float)(aircraft.x + kRadius * sin(angle));
  position->y = (float)(aircraft.y + kHeight);
  position->z = (float)(aircraft.z + kRadius * cos(angle));
  position->pitch = -14.0F; /* down at the aircraft */
  position->heading = fmodf(360.0F - 360.0F * part, 360.0F);
  position->zoom = 1.0F + (float)gZoomPasses / kPassesPerZoom;
  return 1;
}

static int OnCircle(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase != VYRA_COMMAND_PHASE_BEGIN) return 0;
  gStartTime = VYRAGetElapsedTime();
  gZoomPasses = 0;
  VYRAControlCamera(VYRA_CAMERA_UNTIL_VIEW_CHANGES, Circle, NULL);
  TourLog("camera taken");
  return 0; /* nobody else has to act on it */
}

static int OnZoomIn(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase == VYRA_COMMAND_PHASE_BEGIN) gPassesHeld = 0;
  if (phase == VYRA_COMMAND_PHASE_CONTINUE) {
    ++gPassesHeld;
    ++gZoomPasses;
  }
  if (phase == VYRA_COMMAND_PHASE_END) TourLog("zoomed in for %d passes", gPassesHeld);
  return 0;
}

void TourStartCamera(void) {
  TourAddCommand("tour/circle", "Circle the aircraft with the camera", OnCircle);
  TourAddCommand("tour/zoom_in", "Bring the camera nearer", OnZoomIn);
}
