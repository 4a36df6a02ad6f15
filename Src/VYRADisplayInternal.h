// The records of the display subsystem, their lists, and what the host's hooks and the lifecycle call of it.
#pragma once

#include <string>
#include <tuple>

#include "VYRADisplay.h"
#include "VYRALoaderDispatch.h"
#include "VYRAResourceList.h"
#include "VYRAResourceWalk.h"

struct VYRADrawCallbackRecord : VYRAResource_t<VYRADrawCallbackRecord> {
  VYRADrawCallback_f callback = nullptr;
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  int phase = 0;
  int wantsBefore = 0;
  void* refcon = nullptr;

  // What a registration is known by, whoever made it.
  auto Key() const { return std::tuple(callback, phase, wantsBefore, refcon); }
};

struct VYRAKeyCallbackRecord : VYRAResource_t<VYRAKeyCallbackRecord> {
  VYRAKeySniffer_f callback = nullptr;
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  int beforeWindows = 0;
  void* refcon = nullptr;

  // What a registration is known by, whoever made it.
  auto Key() const { return std::tuple(callback, beforeWindows, refcon); }
};

struct VYRAWindowCallbackRecord : VYRAStackedResource_t<VYRAWindowCallbackRecord> {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  int visible = 0;
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  VYRADrawWindow_f draw = nullptr;
  VYRAHandleKey_f handleKey = nullptr;
  VYRAHandleMouseClick_f handleMouseClick = nullptr;
  VYRAHandleCursor_f handleCursor = nullptr;
  VYRAHandleMouseWheel_f handleMouseWheel = nullptr;
  void* refcon = nullptr;
};

struct VYRAHotKeyInfoRecord : VYRAResource_t<VYRAHotKeyInfoRecord> {
  VYRAHotKeyInfoRecord();
  ~VYRAHotKeyInfoRecord();
  VYRAHotKeyInfoRecord(const VYRAHotKeyInfoRecord&) = delete;
  VYRAHotKeyInfoRecord& operator=(const VYRAHotKeyInfoRecord&) = delete;

  VYRAPluginID owner = VYRA_NO_PLUGIN;
  char virtualKey = 0;
  int flags = 0;
  std::string description;
  VYRAHotKey_f callback = nullptr;
  void* refcon = nullptr;
  std::size_t slot = 0;  // its place among all, as VYRASequence counts
};

extern VYRAResourceList<VYRADrawCallbackRecord> gDrawCallbacks;
extern VYRAResourceList<VYRAKeyCallbackRecord> gKeyCallbacks;
extern VYRAResourceList<VYRAWindowCallbackRecord> gWindows;  // the front-most window first
extern VYRAResourceList<VYRAHotKeyInfoRecord> gHotKeys;

extern VYRAWindowCallbackRecord* gFocusWindow;  // has keyboard focus; null: none
extern VYRAWindowCallbackRecord* gDragWindow;   // took the mouse-down and holds the mouse; null: none
extern VYRAWindowID gDrawnWindow;               // is being drawn; only its address counts; null: none

// A step of the host's frame; whether the host is to draw what the step stands before.
int VYRADisplayDoDrawingHook(int step, int isReflection);

// A key event; 0 when a plugin consumed it, else 1.
int VYRADisplayKeyPressHook(char key, int flags, char virtualKey);

// A mouse event of status VYRA_MOUSE_DOWN, _DRAG or _UP; 0 when a window took it, else 1.
int VYRADisplayMouseClickHook(int x, int y, int status);

// The mouse's drag of this frame, for the window that holds the mouse.
void VYRADisplayMouseDragHook();

// The cursor over the windows; 0 for the host's own.
int VYRADisplayCursorHook(int x, int y);

// A turn of the wheel; 0 when a window consumed it, else 1.
int VYRADisplayScrollWheelHook(int x, int y, int wheel, int clicks);

// Draws the windows, the back-most first.
void VYRADisplayDrawWindows();

// Fires the hot key of a combination; whether there was one.
bool VYRADispatchHotKey(char virtualKey, int flags);

// A plugin is disabled: it loses keyboard focus and the mouse, and while it may be called it is told so.
void VYRADisplayDisableHook(VYRAPluginID plugin);

// A plugin leaves: its draw callbacks, key sniffers, windows and hot keys are removed.
void VYRADisplayCleanupHook(VYRAPluginID plugin);
