/*
 * The parts of the plugin tour: each is driven by commands and sets itself up when the plugin starts. A
 * command of another plugin or of the user's key does the same as one of the flight file.
 */
#ifndef TOUR_H
#define TOUR_H

#include "VYRAUtilities.h"

/* Writes a line to the log, put together as by printf, with the plugin's name in front. */
__attribute__((format(printf, 1, 2))) void TourLog(const char* format, ...);

/* Makes a command of this plugin, which alone acts on it. */
void TourAddCommand(const char* name, const char* description, VYRACommandHandler_f handler);

/* The user's aircraft in local metres. */
typedef struct TourPlace {
  double x, y, z;
} TourPlace;

TourPlace TourAircraftPlace(void);

void TourStartCamera(void);
void TourStartPlanes(void);
void TourStartLandmark(void);

#endif
