/*
 * The command tour/lead takes the AI planes, or gives them back: one of them flies the model of the user's
 * aircraft, and no more than that one flies.
 */
#include <stdio.h>
#include <string.h>

#include "VYRAPlanes.h"
#include "tour.h"

enum { LED_PLANE = 1, ACTIVE_PLANES = 2, MODEL_SIZE = 600 };

static int gHasPlanes;

static void TakePlanes(void) {
  char model[MODEL_SIZE] = "";
  VYRAGetSystemPath(model);
  strncat(model, "Aircraft/Trainer/Trainer.acf", sizeof(model) - strlen(model) - 1);
  char none[] = ""; /* plane 0 is the user's */
  char* models[] = {none, model, NULL};
  /* Without a callback: when another plugin has them, this one does not wait for them. */
  gHasPlanes = VYRAAcquirePlanes(models, NULL, NULL);
  if (!gHasPlanes) {
    TourLog("another plugin has the AI planes");
    return;
  }
  VYRASetActiveAircraftCount(ACTIVE_PLANES);
  VYRADisableAIForPlane(LED_PLANE);
  TourLog("AI planes taken");
}

static void GivePlanesBack(void) {
  char fileName[256] = "";
  char path[VYRA_PATH_SIZE] = "";
  VYRAGetNthAircraftModel(LED_PLANE, fileName, path);
  TourLog("plane %d was a %s", LED_PLANE, fileName);
  VYRAReleasePlanes();
  gHasPlanes = 0;
  TourLog("AI planes given back");
}

static int OnLead(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase != VYRA_COMMAND_PHASE_BEGIN) return 0;
  if (gHasPlanes)
    GivePlanesBack();
  else
    TakePlanes();
  return 0;
}

void TourStartPlanes(void) { TourAddCommand("tour/lead", "Take the AI planes, or give them back", OnLead); }
