// The camera: who controls it, what the host gets of it, and how control ends.
#include "VYRACamera.h"

#include "VYRAAtEnd.h"
#include "VYRADisplayCameraInternal.h"
#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"

namespace {

bool gIsControlled = false;
int gControlDuration = 0;
VYRACameraControl_f gCurrentControlFunc = nullptr;
VYRAPluginID gCurrentControlPlugin = VYRA_NO_PLUGIN;
void* gCameraControlRef = nullptr;

// A plugin that is being told that it loses control. It is told once, also when what it does in that call
// leads to another release.
class StLosingControl {
 public:
  explicit StLosingControl(VYRAPluginID plugin) : loser(plugin), outer(innermost) { innermost = this; }
  ~StLosingControl() { innermost = outer; }
  StLosingControl(const StLosingControl&) = delete;
  StLosingControl& operator=(const StLosingControl&) = delete;

  static bool IsUnderWayFor(VYRAPluginID plugin) {
    for (const StLosingControl* losing = innermost; losing != nullptr; losing = losing->outer) {
      if (losing->loser == plugin) return true;
    }
    return false;
  }

 private:
  VYRAPluginID loser;
  const StLosingControl* outer;
  static inline const StLosingControl* innermost = nullptr;
};

void TellLosingControl() {
  const VYRAPluginID loser = gCurrentControlPlugin;
  if (gCurrentControlFunc == nullptr || StLosingControl::IsUnderWayFor(loser)) return;
  const StLosingControl losing(loser);
  const StDispatchCallback dispatch(loser, VYRA_CALL_CAMERA);
  if (dispatch()) gCurrentControlFunc(nullptr, 1, gCameraControlRef);
}

void VYRAReleaseCameraInternal(bool force) {
  if (!gIsControlled) return;
  if (!force && gControlDuration != VYRA_CAMERA_UNTIL_VIEW_CHANGES) return;
  const StAtEnd endControl([] {
    gIsControlled = false;
    gCurrentControlPlugin = VYRA_NO_PLUGIN;
  });
  TellLosingControl();
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
