/*
 * VYRADisplay.h: drawing in the host's frame, keystrokes, windows and hot keys.
 *
 * All coordinates are screen pixels with x to the right and y upward, so a window's top is larger than its
 * bottom. The numbers of drawing phases, keys and modifier flags are the host's. Callbacks are called with
 * their plugin as the calling plugin, and only while it is enabled; a disabled plugin's registrations stay.
 * A callback may remove itself, any other or all of its kind. It should let no C++ exception out: VYRADefs.h
 * tells what becomes of one, and what stands below of callbacks that throw is what holds when one does.
 */
#ifndef VYRA_DISPLAY_H
#define VYRA_DISPLAY_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/* ---- Draw callbacks ----------------------------------------------------------------------------------- */

/**
 * Draws in one phase of the host's frame. phase, isBefore: as registered. refcon: as registered.
 * Result: before the host draws the phase, 1 lets it draw and 0 asks it not to; the results of all
 * callbacks are combined bit by bit, so 2 counts as 0 beside a 1. After, the result is ignored.
 */
typedef int (*VYRADrawCallback_f)(int phase, int isBefore, void* refcon);

/**
 * Registers a draw callback of the calling plugin; the one registered last is called first.
 *
 * phase: the host's number of the phase. wantsBefore: 1 to be called before the host draws the phase, 0 for
 * after. Result: 1, or 0 when somebody has registered the same callback with the same phase, wantsBefore and
 * refcon. In reflection passes only plugins with the feature "VYRA_WANTS_REFLECTIONS" are called. A null
 * callback is never called. One registered during a dispatch is first called in the next.
 * [always]
 */
VYRA_API int VYRARegisterDrawCallback(VYRADrawCallback_f callback, int phase, int wantsBefore, void* refcon);

/**
 * Removes the draw callback with exactly these values, whoever registered it. Result: 1, or 0 for none.
 * [always]
 */
VYRA_API int VYRAUnregisterDrawCallback(VYRADrawCallback_f callback, int phase, int wantsBefore,
                                        void* refcon);

/* ---- Key sniffers ------------------------------------------------------------------------------------- */

/**
 * Sees a keystroke. key: the character; flags: the modifiers; virtualKey: the key's code; both characters are
 * 8 bits, signed. Result: 1 to pass the key on, 0 to consume it.
 */
typedef int (*VYRAKeySniffer_f)(char key, int flags, char virtualKey, void* refcon);

/**
 * Registers a key sniffer of the calling plugin; the one registered last is called first. beforeWindows: 1 to
 * see keys before hot keys and windows, 0 to see those that neither took. Result: 1, or 0 when somebody has
 * registered the same sniffer with the same beforeWindows and refcon. A null callback is never called.
 * [always]
 */
VYRA_API int VYRARegisterKeySniffer(VYRAKeySniffer_f callback, int beforeWindows, void* refcon);

/**
 * Removes the key sniffer with exactly these values, whoever registered it. Result: 1, or 0 for none.
 * [always]
 */
VYRA_API int VYRAUnregisterKeySniffer(VYRAKeySniffer_f callback, int beforeWindows, void* refcon);

/* ---- Windows ------------------------------------------------------------------------------------------
 *
 * Windows lie above each other in one order, shared by all plugins; a new one is in front. Any function may
 * be given any handle: one that is no window of the list, a destroyed one too, does nothing or gives 0.
 */

/* A window. The handle is valid until the window is destroyed, or its plugin is unloaded. */
typedef struct VYRAWindowCallbackRecord* VYRAWindowID;

/** Draws a window, the back-most first, once per frame while it is visible. */
typedef void (*VYRADrawWindow_f)(VYRAWindowID window, void* refcon);

/**
 * A keystroke for the window with keyboard focus, which thereby is consumed. With losingFocus 1, no key: the
 * window loses the focus, and `window` is then the one that takes it (null when none does), not the loser.
 */
typedef void (*VYRAHandleKey_f)(VYRAWindowID window, char key, int flags, char virtualKey, void* refcon,
                                int losingFocus);

/**
 * A mouse event. mouseStatus: one of the three below. Result, for a press: 1 takes the mouse, so that the
 * drags and the release come here wherever the mouse is; 0 leaves the press to the window behind. Drags come
 * once per frame while the mouse is held; their result and the release's are ignored.
 */
typedef int (*VYRAHandleMouseClick_f)(VYRAWindowID window, int x, int y, int mouseStatus, void* refcon);

#define VYRA_MOUSE_DOWN 1 /* pressed */
#define VYRA_MOUSE_DRAG 2 /* held, in each frame */
#define VYRA_MOUSE_UP 3   /* released */

/** The mouse is over the window. Result: the host's number of a cursor; 0 leaves it to the window behind. */
typedef int (*VYRAHandleCursor_f)(VYRAWindowID window, int x, int y, void* refcon);

/** The wheel was turned over the window: which wheel, and by how many clicks. Result: 1 consumes it. */
typedef int (*VYRAHandleMouseWheel_f)(VYRAWindowID window, int x, int y, int wheel, int clicks, void* refcon);

/* Note the order: here the mouse callback comes before the key callback, in VYRACreateWindow after it. */
typedef struct VYRAWindowCreateParams {
  int structSize; /* sizeof(VYRAWindowCreateParams): 72 */
  int left;       /* the edges, in pixels; a window holds its left and bottom edge, not its right and top */
  int top;        /* the upper edge */
  int right;      /* the right edge */
  int bottom;     /* the lower edge */
  int visible;    /* 1: drawn, and under the mouse */
  VYRADrawWindow_f draw;                   /* its drawing */
  VYRAHandleMouseClick_f handleMouseClick; /* a press, a drag or a release */
  VYRAHandleKey_f handleKey;               /* a key, or the loss of focus */
  VYRAHandleCursor_f handleCursor;         /* may be null, as may each of the others */
  VYRAHandleMouseWheel_f handleMouseWheel; /* a turn of the wheel */
  void* refcon; /* passed to the callbacks; what it points to belongs to the plugin */
} VYRAWindowCreateParams;

VYRA_LAYOUT_ASSERT(WindowCreateParamsIs72Bytes, sizeof(VYRAWindowCreateParams) == 72);
VYRA_LAYOUT_ASSERT(WindowCreateParamsVisibleAt20, offsetof(VYRAWindowCreateParams, visible) == 20);
VYRA_LAYOUT_ASSERT(WindowCreateParamsMouseAt32, offsetof(VYRAWindowCreateParams, handleMouseClick) == 32);
VYRA_LAYOUT_ASSERT(WindowCreateParamsRefconAt64, offsetof(VYRAWindowCreateParams, refcon) == 64);

/**
 * Creates a window of the calling plugin, in front of all others. It lives until it is destroyed or its
 * plugin is unloaded. Arguments as in VYRAWindowCreateParams; it has no cursor and no wheel callback. Never
 * null. Do not create windows from a draw callback: between the drawing of the windows and the host's next
 * cursor query a new window hides all but the back-most one. One that is created while the windows are drawn
 * is first drawn in the next frame; one that is hidden is removed with its plugin.
 * [always]
 */
VYRA_API VYRAWindowID VYRACreateWindow(int left, int top, int right, int bottom, int visible,
                                       VYRADrawWindow_f draw, VYRAHandleKey_f handleKey,
                                       VYRAHandleMouseClick_f handleMouseClick, void* refcon);

/**
 * The same with all callbacks. params: read during the call only. Result: null when params is null or its
 * structSize is not 72.
 * [always]
 */
VYRA_API VYRAWindowID VYRACreateWindowEx(const VYRAWindowCreateParams* params);

/**
 * Destroys a window; one with keyboard focus is told that it loses it, and is destroyed also when it throws
 * then. Also from its own callbacks.
 * [always]
 */
VYRA_API void VYRADestroyWindow(VYRAWindowID window);

/** Fills each pointer that is not null with an edge in pixels. [always] */
VYRA_API void VYRAGetWindowGeometry(VYRAWindowID window, int* outLeft, int* outTop, int* outRight,
                                    int* outBottom);

/** Sets the edges in pixels; nothing checks their order. [always] */
VYRA_API void VYRASetWindowGeometry(VYRAWindowID window, int left, int top, int right, int bottom);

/** The value that visibility was last set to; 0 is hidden. [always] */
VYRA_API int VYRAGetWindowIsVisible(VYRAWindowID window);

/**
 * Shows (1) or hides (0) a window; a window that is hidden while it has keyboard focus loses it first.
 * [always]
 */
VYRA_API void VYRASetWindowIsVisible(VYRAWindowID window, int visible);

/** The pointer that the callbacks of a window are given. [always] */
VYRA_API void* VYRAGetWindowRefCon(VYRAWindowID window);
/** Sets the pointer that the callbacks of a window are given. [always] */
VYRA_API void VYRASetWindowRefCon(VYRAWindowID window, void* refcon);

/**
 * Gives keyboard focus to a window; null, or a handle that is none, releases it. The window that had it is
 * told first, once, and has lost it afterwards even when it throws. Nothing happens when the window has it
 * already or its plugin is disabled; nobody has it when that plugin is disabled, or the window destroyed,
 * while the loser is told.
 * [always]
 */
VYRA_API void VYRATakeKeyboardFocus(VYRAWindowID window);

/** Puts a window in front of all others, at once. [always] */
VYRA_API void VYRABringWindowToFront(VYRAWindowID window);

/** 1 when the window is the front-most visible one. [always] */
VYRA_API int VYRAIsWindowInFront(VYRAWindowID window);

/** The screen's size in pixels. The pointers are the host's to check. [started] */
VYRA_API void VYRAGetScreenSize(int* outWidth, int* outHeight);

/** The mouse's position in pixels. The pointers are the host's to check. [started] */
VYRA_API void VYRAGetMouseLocation(int* outX, int* outY);

/* ---- Hot keys ------------------------------------------------------------------------------------------
 *
 * Bound by one plugin, listed and rebound by any. A handle that is no hot key does nothing.
 */

/* A hot key. The handle is valid until the hot key is unregistered, or its plugin is unloaded. */
typedef struct VYRAHotKeyInfoRecord* VYRAHotKeyID;

/** A hot key was pressed, and is thereby consumed. */
typedef void (*VYRAHotKey_f)(void* refcon);

/* Size in bytes, terminator included, of a buffer for a hot key's description. */
enum { VYRA_HOT_KEY_DESCRIPTION_SIZE = 512 };

/**
 * Binds a key with exactly these modifier flags; of several on one combination the one registered last fires.
 *
 * virtualKey: the key's code. description: copied; null is taken as empty. callback: with null the hot key
 * never fires. Result: the handle. It lives until it is unregistered or its plugin is unloaded.
 * [always]
 */
VYRA_API VYRAHotKeyID VYRARegisterHotKey(char virtualKey, int flags, const char* description,
                                         VYRAHotKey_f callback, void* refcon);

/** Removes a hot key, of any plugin. [always] */
VYRA_API void VYRAUnregisterHotKey(VYRAHotKeyID hotKey);

/** The number of hot keys of all plugins. [always] */
VYRA_API int VYRACountHotKeys(void);

/** Hot key number `index` from 0, the one registered last first; null past the end or for a negative index.
 * [always]
 */
VYRA_API VYRAHotKeyID VYRAGetNthHotKey(int index);

/**
 * Fills each pointer that is not null. outDescription: a buffer of 512 bytes; a longer description is cut to
 * 511 bytes and terminated. outPlugin: the plugin that registered it.
 * [always]
 */
VYRA_API void VYRAGetHotKeyInfo(VYRAHotKeyID hotKey, char* outVirtualKey, int* outFlags, char* outDescription,
                                VYRAPluginID* outPlugin);

/** Binds a hot key, of any plugin, to another combination. [always] */
VYRA_API void VYRASetHotKeyCombination(VYRAHotKeyID hotKey, char virtualKey, int flags);

VYRA_END_DECLARATIONS

#endif
