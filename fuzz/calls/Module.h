// What the driver and the modules that it has loaded know of each other. A module has code, data and an
// exception type of its own, so that a call into a module that was closed, a return to it and the end of an
// exception of its type are faults that the machine sees; everything that it decides, the driver decides.
#pragma once

#include "VYRACamera.h"
#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAMenus.h"
#include "VYRAPlanes.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "VYRAScenery.h"
#include "VYRAUtilities.h"

// clang-format off
#define FOR_EACH_CALLBACK(X)                                                                                 \
  X(VYRAFlightLoop_f, flightLoop) X(VYRADrawCallback_f, draw) X(VYRAKeySniffer_f, sniffer)                   \
  X(VYRADrawWindow_f, drawWindow) X(VYRAHandleKey_f, windowKey) X(VYRAHandleMouseClick_f, windowMouse)       \
  X(VYRAHandleCursor_f, windowCursor) X(VYRAHandleMouseWheel_f, windowWheel) X(VYRAHotKey_f, hotKey)         \
  X(VYRACameraControl_f, camera) X(VYRAMenuHandler_f, menu) X(VYRACommandHandler_f, command)                 \
  X(VYRAPlanesReturned_f, planesReturned) X(VYRAObjectReady_f, objectReady) X(VYRADataChanged_f, changed)    \
  X(VYRALibraryEnumerator_f, found) X(VYRAReadInt_f, readInt) X(VYRAWriteInt_f, writeInt)                    \
  X(VYRAReadFloat_f, readFloat) X(VYRAWriteFloat_f, writeFloat) X(VYRAReadDouble_f, readDouble)              \
  X(VYRAWriteDouble_f, writeDouble) X(VYRAReadIntArray_f, readInts) X(VYRAWriteIntArray_f, writeInts)        \
  X(VYRAReadFloatArray_f, readFloats) X(VYRAWriteFloatArray_f, writeFloats) X(VYRAReadData_f, readData)      \
  X(VYRAWriteData_f, writeData)
// clang-format on

namespace calls {

// One function of each kind that plugins register.
struct Callbacks {
#define CALLBACK_FIELD(type, name) type name;
  FOR_EACH_CALLBACK(CALLBACK_FIELD)
#undef CALLBACK_FIELD
};

struct Plugin;

// A module, as it shows itself to the driver.
struct Module {
  const Callbacks* callbacks;
  VYRAError_f error;
  void (*fail)();            // throws an exception of the module's own type
  bool isResident;           // the system keeps it in memory when it is closed
  int inside = 0;            // how many calls of its code are on the stack
  int exceptions = 0;        // how many exceptions of its type live
  Plugin* plugin = nullptr;  // the driver's record of the plugin that the module is now
};

// What modules pass on to the driver.
struct Driver {
  Callbacks callbacks;
  void (*opened)(Module& module);
  void (*closing)(Module& module);
  int (*start)(Module& module, char* outName, char* outSignature, char* outDescription);
  void (*stop)(Module& module);
  int (*enable)(Module& module);
  void (*disable)(Module& module);
  void (*message)(Module& module, VYRAPluginID from, int message, void* param);
  void (*error)(Module& module, const char* message);
};

}  // namespace calls

// The driver's program exports it to the modules.
extern "C" __attribute__((visibility("default"))) const calls::Driver* VYRAFuzzDriver();
