// The simulator's hooks for input and queries, each handed on to the subsystem that answers it.
#include "VYRADisplayCameraInternal.h"
#include "VYRADisplayInternal.h"
#include "VYRAHost.h"
#include "VYRAHostEntryPointsCall.h"
#include "VYRAMenusInternal.h"
#include "VYRAPlanesInternal.h"
#include "VYRAUtilitiesCommands.h"

namespace {

// Hands a call on to its subsystem, as a call of the host.
template <class Result, class... Parameters, class... Arguments>
Result HandOn(Result (*subsystem)(Parameters...), Arguments... arguments) {
  return VYRARunHostCall([&] { return subsystem(arguments...); });
}

}  // namespace

int VYRADoDrawingHook(int step, int isReflection) {
  return HandOn(VYRADisplayDoDrawingHook, step, isReflection);
}

int VYRAMouseClickHook(int x, int y, int down) {
  return HandOn(VYRADisplayMouseClickHook, x, y, down != 0 ? VYRA_MOUSE_DOWN : VYRA_MOUSE_UP);
}

int VYRAKeyPressHook(int key, int flags, int virtualKey) {
  return HandOn(VYRADisplayKeyPressHook, static_cast<char>(key), flags, static_cast<char>(virtualKey));
}

int VYRACursorHook(int x, int y) { return HandOn(VYRADisplayCursorHook, x, y); }

int VYRAScrollWheelHook(int x, int y, int wheel, int clicks) {
  return HandOn(VYRADisplayScrollWheelHook, x, y, wheel, clicks);
}

int VYRACameraHook(float* x, float* y, float* z, float* pitch, float* heading, float* roll, float* zoom) {
  return HandOn(VYRAAdjustCamera, x, y, z, pitch, heading, roll, zoom);
}

int VYRAMenuHook(int item) { return HandOn(VYRAHandleMenuItemPick, item); }

int VYRACheckMenuHook(int menu, int position, int* outState) {
  return HandOn(VYRAHandleMenuItemCheck, menu, position, outState);
}

int VYRAMenuItemEnabled(int menu, int position) { return HandOn(VYRAHandleMenuItemEnable, menu, position); }

void VYRAUpdatePlaneNameAndPath(int planeIndex, char* name, char* ioPath) {
  HandOn(VYRAHandleUpdatePlaneNameAndPath, planeIndex, name, ioPath);
}

int VYRAGetNumberPlanesToHandle(int total, int flag) {
  return HandOn(VYRAHandleGetNumberPlanesToHandle, total, flag);
}

int VYRACommandHook(VYRACommandRef command, int isBegin, int isEnd, int isBefore) {
  return HandOn(VYRADispatchCommandHook, command, isBegin, isEnd, isBefore);
}
