/*
 * VYRACamera.h: taking over the host's camera, by one plugin at a time.
 */
#ifndef VYRA_CAMERA_H
#define VYRA_CAMERA_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/* A camera: seven floats that the library moves between host and plugin without looking at them. Their units,
 * and what the angles and the zoom count from, are the host's to define. */
typedef struct VYRACameraPosition {
  float x;       /* position, in the host's local coordinates */
  float y;       /* likewise */
  float z;       /* likewise */
  float pitch;   /* an angle */
  float heading; /* an angle */
  float roll;    /* an angle */
  float zoom;    /* enlargement */
} VYRACameraPosition;

VYRA_LAYOUT_ASSERT(CameraPositionIs28Bytes, sizeof(VYRACameraPosition) == 28);

/* Durations: this one ends when the host's view changes; the meaning of any other is the host's, and to the
 * library it lasts until the plugin gives the camera back. */
#define VYRA_CAMERA_UNTIL_VIEW_CHANGES 1

/**
 * Sets the camera of a frame, once per frame while its plugin controls the camera.
 *
 * position: on entry the host's camera; write the wanted one into it. Valid during the call only. Null when
 * isLosingControl is 1: control ends, and the result is ignored; it ends also when the callback throws then,
 * or takes control again. One that throws otherwise keeps control.
 * Result: 1 to use the position, 0 to end control and leave this frame to the host. Return nothing else: it
 * is passed on to the host, subtracted from 1, unchecked.
 */
typedef int (*VYRACameraControl_f)(VYRACameraPosition* position, int isLosingControl, void* refcon);

/**
 * Takes the camera for the calling plugin at once. A plugin that had it is replaced without being told.
 * howLong: a duration, see above. control: with null, control ends at the next frame.
 * [always]
 */
VYRA_API void VYRAControlCamera(int howLong, VYRACameraControl_f control, void* refcon);

/** Ends control, by whomever it is held; the control callback is not called. [always] */
VYRA_API void VYRADontControlCamera(void);

/**
 * 1 when a plugin controls the camera, and then its duration through outHowLong, unless that is null.
 * [always]
 */
VYRA_API int VYRAIsCameraBeingControlled(int* outHowLong);

/** Fills the record with the host's camera. Null is ignored. [started] */
VYRA_API void VYRAReadCameraPosition(VYRACameraPosition* outPosition);

VYRA_END_DECLARATIONS

#endif
