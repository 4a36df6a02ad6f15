// The simulator's hooks for input and queries, each handed on to the subsystem that answers it. While nothing
// is loaded they answer as if no plugin had registered anything.
#include "VYRADisplayCameraInternal.h"
#include "VYRADisplayInternal.h"
#include "VYRAHost.h"
#include "VYRALoaderHostCalls.h"
#include "VYRALoaderRegistry.h"
#include "VYRAMenusInternal.h"
#include "VYRAPlanesInternal.h"
#include "VYRAUtilitiesCommands.h"

namespace {

// Hands a call on to its subsystem, as a call of the host; without plugins, `idle` is the answer.
template <class... Parameters, class... Arguments>
int HandOn(int idle, int (*subsystem)(Parameters...), Arguments... arguments) {
  if (gAllPlugins.empty()) return idle;
  const StHostCall call;
  return subsystem(arguments...);
}

}  // namespace

int VYRADoDrawingHook(int step, int isReflection) {
  return HandOn(1, VYRADisplayDoDrawingHook, step, isReflection);
}

int VYRAMouseClickHook(int x, int y, int down) {
  return HandOn(1, VYRADisplayMouseClickHook, x, y, down != 0 ? VYRA_MOUSE_DOWN : VYRA_MOUSE_UP);
}

int VYRAKeyPressHook(int key, int flags, int virtualKey) {
  return HandOn(1, VYRADisplayKeyPressHook, static_cast<char>(key), flags, static_cast<char>(virtualKey));
}

int VYRACursorHook(int x, int y) { return HandOn(0, VYRADisplayCursorHook, x, y); }

int VYRAScrollWheelHook(int x, int y, int wheel, int clicks) {
  return HandOn(1, VYRADisplayScrollWheelHook, x, y, wheel, clicks);
}

int VYRACameraHook(float* x, float* y, float* z, float* pitch, float* heading, float* roll, float* zoom) {
  return HandOn(1, VYRAAdjustCamera, x, y, z, pitch, heading, roll, zoom);
}

int VYRAMenuHook(int item) { return HandOn(1, VYRAHandleMenuItemPick, item); }

int VYRACheckMenuHook(int menu, int position, int* outState) {
  return HandOn(1, VYRAHandleMenuItemCheck, menu, position, outState);
}

int VYRAMenuItemEnabled(int menu, int position) {
  return HandOn(1, VYRAHandleMenuItemEnable, menu, position);
}

void VYRAUpdatePlaneNameAndPath(int planeIndex, char* name, char* ioPath) {
  const StHostCall call;
  VYRAHandleUpdatePlaneNameAndPath(planeIndex, name, ioPath);
}

int VYRAGetNumberPlanesToHandle(int total, int flag) {
  const StHostCall call;
  return VYRAHandleGetNumberPlanesToHandle(total, flag);
}

int VYRACommandHook(VYRACommandRef command, int isBegin, int isEnd, int isBefore) {
  return HandOn(1, VYRADispatchCommandHook, command, isBegin, isEnd, isBefore);
}
