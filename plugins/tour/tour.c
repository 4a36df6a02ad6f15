/*
 * The plugin tour: shows the user around. Its parts look through the camera (tour_camera.c), lead the AI
 * planes (tour_planes.c) and put a landmark on the ground (tour_landmark.c).
 */
#include "tour.h"

#include <stdarg.h>
#include <stdio.h>
#include <string.h>

#include "VYRADataAccess.h"
#include "VYRAGraphics.h"
#include "VYRAPlugin.h"

static struct { VYRADataRef latitude, longitude, altitude; } gAircraft;

static void OnError(const char* message) {
  VYRADebugString("[Tour]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

void TourLog(const char* format, ...) {
  char text[512];
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(text, sizeof(text), format, arguments);
  va_end(arguments);
  VYRADebugString("tour: ");
  VYRADebugString(text);
  VYRADebugString("\n");
}

void TourAddCommand(const char* name, const char* description, VYRACommandHandler_f handler) {
  VYRARegisterCommandHandler(VYRACreateCommand(name, description), handler, 1, NULL);
}

TourPlace TourAircraftPlace(void) {
  TourPlace place = {0.0, 0.0, 0.0};
  VYRAWorldToLocal(VYRAGetDatad(gAircraft.latitude), VYRAGetDatad(gAircraft.longitude),
                   (double)VYRAGetDataf(gAircraft.altitude), &place.x, &place.y, &place.z);
  return place;
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Tour");
  strcpy(outSignature, "org.skyvora.tour");
  strcpy(outDescription, "Shows the user around.");
  VYRASetErrorCallback(OnError);
  gAircraft.latitude = VYRAFindDataRef("sim/aircraft/latitude_deg");
  gAircraft.longitude = VYRAFindDataRef("sim/aircraft/longitude_deg");
  gAircraft.altitude = VYRAFindDataRef("sim/aircraft/altitude_m");
  TourStartCamera();
  TourStartPlanes();
  TourStartLandmark();
  return 1;
}

/* The library takes back whatever is left: the commands' handlers, the camera, the planes, the probe and the
 * object, also one that is still being loaded. */
void VyPluginStop(void) { TourLog("stopped"); }
