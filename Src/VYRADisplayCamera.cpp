#include "VYRACamera.h"

#include "VYRADisplayCameraInternal.h"
#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"

namespace {

bool gIsControlled = false;
int gControlDuration = 0;
VYRACameraControl_f gCurrentControlFunc = nullptr;
VYRAPluginID gCurrentControlPlugin = VYRA_NO_PLUGIN;
void* gCameraControlRef = nullptr;

void VYRAReleaseCameraInternal(bool force) {
  if (!gIsControlled) return;
  if (!force && gControlDuration != VYRA_CAMERA_UNTIL_VIEW_CHANGES) return;
  if (gCurrentControlFunc != nullptr) {
    const StDispatchCallback dispatch(gCurrentControlPlugin, VYRA_CALL_CAMERA);
    if (dispatch()) gCurrentControlFunc(nullptr, 1, gCameraControlRef);
  }
  gIsControlled = false;
  gCurrentControlPlugin = VYRA_NO_PLUGIN;
}

// Asks the controlling plugin for its camera; its answer, or 0 when it may not be asked.
int AskController(VYRACameraPosition& position) {
  const StDispatchCallback dispatch(gCurrentControlPlugin, VYRA_CALL_CAMERA);
  if (!dispatch()) {
    gCurrentControlPlugin = VYRA_NO_PLUGIN;
    return 0;
  }
  return gCurrentControlFunc != nullptr ? gCurrentControlFunc(&position, 0, gCameraControlRef) : 0;
}

}  // namespace

void VYRAControlCamera(int howLong, VYRACameraControl_f control, void* refcon) {
  gIsControlled = true;
  gControlDuration = howLong;
  gCurrentControlFunc = control;
  gCurrentControlPlugin = gDispatchedPlugin;
  gCameraControlRef = refcon;
}

void VYRADontControlCamera(void) { gIsControlled = false; }

int VYRAIsCameraBeingControlled(int* outHowLong) {
  if (!gIsControlled) return 0;
  if (outHowLong != nullptr) *outHowLong = gControlDuration;
  return 1;
}

void VYRAReadCameraPosition(VYRACameraPosition* outPosition) {
  if (outPosition == nullptr) return;
  gHooks->ReadCameraPosition(&outPosition->x, &outPosition->y, &outPosition->z, &outPosition->pitch,
                             &outPosition->heading, &outPosition->roll, &outPosition->zoom);
}

int VYRAAdjustCamera(float* x, float* y, float* z, float* pitch, float* heading, float* roll, float* zoom) {
  if (!gIsControlled) return 1;
  VYRACameraPosition position = {*x, *y, *z, *pitch, *heading, *roll, *zoom};
  const int result = AskController(position);
  if (result == 0) {
    gIsControlled = false;
    return 1;
  }
  *x = position.x;
  *y = position.y;
  *z = position.z;
  *pitch = position.pitch;
  *heading = position.heading;
  *roll = position.roll;
  *zoom = position.zoom;
  // Kept: a result other than 0 and 1 is passed on as it comes out; hosts take anything but 1 as set.
  return static_cast<int>(1U - static_cast<unsigned>(result));
}

void VYRAReleaseCamera() { VYRAReleaseCameraInternal(false); }

void VYRACameraDisableHook(VYRAPluginID plugin) {
  if (plugin == gCurrentControlPlugin) VYRAReleaseCameraInternal(true);
}

void VYRACameraCleanupHook(VYRAPluginID plugin) { VYRACameraDisableHook(plugin); }
