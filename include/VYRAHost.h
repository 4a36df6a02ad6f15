/*
 * VYRAHost.h: what a simulator that embeds the library fills in and calls: the host service table and the
 * host entry points. docs/host-guide.md tells the same as a story.
 *
 * The contract in short:
 *   1. Register the simulator's own datarefs (VYRADataAccess.h).
 *   2. Fill every slot of a VYRAHostServices and call VYRAInitializePlugins once.
 *   3. Call events and hooks, always from the thread that called VYRAInitializePlugins.
 *   4. Call VYRAShutdownPlugins once before the simulator goes.
 * A plugin's C++ exception that leaves a callback passes through these functions to the simulator, with
 * the library's own state in order; the library catches none. The services themselves must not throw.
 *
 * An event may be called from inside a service, while a plugin's code is running: plugins may be loaded
 * and unloaded that way, but the modules of unloaded ones stay in memory until the outermost call into
 * the library returns, and a reload waits for a pass that is not nested.
 */
#ifndef VYRA_HOST_H
#define VYRA_HOST_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/* ---- The host service table ------------------------------------------------------------------------- */

/**
 * The host's completion of an asynchronous object load: the host calls `completion(object, delivery)`
 * once, on the main thread, with the loaded object (null when it could not be loaded) and the `delivery`
 * that it was given. It may do so before LoadObjectAsync returns.
 */
typedef void (*VYRAObjectLoaded_f)(VYRAObjectRef object, void* delivery);

/**
 * Everything that the library needs from the simulator: a header of two words and 70 functions, called on
 * the main thread. Every slot must be filled; none is checked for null. The table is not copied and must
 * outlive the library's use of it. Texts are terminated, UTF-8 unless a service says otherwise, and
 * valid during the call only. Unless a service says otherwise, the pointers and values of slots 3 to 12,
 * 15, 19 to 22, 27, 34 to 51, 60, 61 and 66 are a plugin's own arguments, passed on unchecked.
 */
struct VYRAHostServices {
  /* Revision of the table: above 2, ShowMessage is called; above 3, ShowLoadingStatus as well. */
  int serviceTableRevision;
  /* The simulator's version: above 567, DestroyMenu and ReinitUsersPlane are called. */
  int hostVersion;

  /* 1: size of the screen in pixels. */
  void (*GetScreenSize)(int* outWidth, int* outHeight);
  /* 2: position of the mouse in pixels, y upward; flag is 1 when a plugin asks, 0 when the library does. */
  void (*GetMouseLocation)(int* outX, int* outY, int flag);
  /* 3: the host's seven drawing-state switches. */
  void (*SetGraphicsState)(int switch1, int switch2, int switch3, int switch4, int switch5, int switch6,
                           int switch7);
  /* 4: */
  void (*BindTexture2d)(int textureNumber, int textureUnit);
  /* 5: outTextureIds holds count ints. */
  void (*GenerateTextureNumbers)(int* outTextureIds, int count);
  /* 6: one of the host's own textures. */
  int (*GetTexture)(int textureId);
  /* 7: degrees and metres to local metres. */
  void (*WorldToLocal)(double latitude, double longitude, double altitude, double* outX, double* outY,
                       double* outZ);
  /* 8: local metres to degrees and metres. */
  void (*LocalToWorld)(double x, double y, double z, double* outLatitude, double* outLongitude,
                       double* outAltitude);
  /* 9: edges in pixels, y upward. */
  void (*DrawTranslucentDarkBox)(int left, int top, int right, int bottom);
  /* 10: colorRgb holds 3 floats from 0 to 1; wordWrapWidth is null or a width in pixels. */
  void (*DrawString)(float* colorRgb, int x, int y, char* text, int* wordWrapWidth, int fontId);
  /* 11: */
  void (*DrawNumber)(float* colorRgb, int x, int y, double value, int digits, int decimals, int showSign,
                     int fontId);
  /* 12: each pointer may be null. */
  void (*GetFontDimensions)(int fontId, int* outCharWidth, int* outCharHeight, int* outDigitsOnly);
  /* 13: simulation time in seconds. */
  float (*GetElapsedTime)(void);
  /* 14: the seven floats of the camera: three of position, three angles, a zoom. */
  void (*ReadCameraPosition)(float* outX, float* outY, float* outZ, float* outPitch, float* outHeading,
                             float* outRoll, float* outZoom);
  /* 15: position in local metres, angles in degrees; full is 0 or 1. */
  void (*DrawAircraft)(int planeIndex, float x, float y, float z, float pitch, float roll, float yaw,
                       int full, void* drawingState);
  /* 16: loads a model into a plane: the model's full path, and its file name. */
  void (*SetAircraftModel)(int planeIndex, const char* path, const char* fileName);
  /* 17: each buffer holds 256 bytes; both must be filled and terminated. */
  void (*GetNthAircraftModel)(int planeIndex, char* outPath, char* outFileName);
  /* 18: returns the number of planes, the user's included; a host may ignore the pointers. */
  int (*CountAircraft)(int* outTotal, int* outActive, int* outController);
  /* 19: */
  void (*PlaceUserAtAirport)(const char* airportCode);
  /* 20: */
  void (*SimulateKeyPress)(int keyType, int key);
  /* 21: */
  void (*SpeakString)(const char* text);
  /* 22: */
  void (*CommandKeyStroke)(int key);
  /* 23: buttons is a run of button numbers closed by a 0; up is 0 for a press, 1 for a release; pass 0 or
   * 1 is the first or second of the two passes of a change. */
  void (*CommandButtonPress)(const int* buttons, int up, int pass);
  /* 24: the host's root folder, ending in "/"; the buffer holds at least 512 bytes. */
  void (*GetSystemPath)(char* outPath);
  /* 25: the host's preferences file; the buffer holds at least 512 bytes. */
  void (*GetPrefsPath)(char* outPath);
  /* 26: */
  void (*GetVersions)(int* outHostVersion, int* outHostId);
  /* 27: the host's language code. */
  int (*GetLanguage)(void);
  /* 28: appends a text to the host's log as it stands. */
  void (*DebugString)(const char* text);
  /* 29: returns the host's number of the new menu; parentMenu 0 is the menu bar. parentItem is
   * a position, or -1 as in 31. After a shutdown and a new start, the menus of before mean nothing. */
  int (*CreateMenu)(int parentMenu, int parentItem, const char* name);
  /* 30: returns the host's number of the new item; position counts all items of the menu from 0. */
  int (*AppendMenuItem)(int menu, int position, const char* name, int flag);
  /* 31: item is a position, and may be -1 when a plugin named an item that it does not have. */
  void (*SetMenuItemName)(int menu, int item, const char* name, int flag);
  /* 32: called when hostVersion is above 567. */
  void (*DestroyMenu)(int menu);
  /* 33: called with 208 and 201 when hostVersion is above 567. */
  void (*ReinitUsersPlane)(int argument1, int argument2);
  /* 34: */
  void (*ReloadScenery)(void);

  /* 35 to 40: the navigation database. A reference is the host's number of a navaid. */
  int (*GetFirstNavAid)(void);
  int (*GetNextNavAid)(int navAid);
  int (*FindFirstNavAidOfType)(int type);
  int (*FindLastNavAidOfType)(int type);
  int (*FindNavAid)(const char* name, const char* ident, float* latitude, float* longitude, int* frequency,
                    int type);
  void (*GetNavAidInfo)(int navAid, int* outType, float* outLatitude, float* outLongitude,
                        float* outElevation, int* outFrequency, float* outHeading, char* outIdent,
                        char* outName, char* outInRegion);
  /* 41 to 49: the flight plan of the flight-management system, by entry index. */
  int (*CountFMSEntries)(void);
  int (*GetDisplayedFMSEntry)(void);
  int (*GetDestinationFMSEntry)(void);
  void (*SetDisplayedFMSEntry)(int index);
  void (*SetDestinationFMSEntry)(int index);
  void (*GetFMSEntryInfo)(int index, int* outType, char* outIdent, int* outNavAid, int* outAltitude,
                          float* outLatitude, float* outLongitude);
  void (*SetFMSEntryInfo)(int index, int navAid, int altitude);
  void (*SetFMSEntryLatLon)(int index, float latitude, float longitude, int altitude);
  void (*ClearFMSEntry)(int index);
  /* 50, 51: the GPS. */
  int (*GetGPSDestinationType)(void);
  int (*GetGPSDestination)(void);

  /* 52: shows four lines to the user; called when serviceTableRevision is above 2. */
  void (*ShowMessage)(const char* line1, const char* line2, const char* line3, const char* line4);
  /* 53: shows progress while plugins load; called when serviceTableRevision is above 3. */
  void (*ShowLoadingStatus)(const char* text);
  /* 54: the command of this name; made when there is none and create is 1, else null then. description
   * is null when create is 0. */
  VYRACommandRef (*FindCommand)(const char* name, const char* description, int create);
  /* 55 to 57: a command is pressed, still held, released. */
  void (*CommandBegin)(VYRACommandRef command);
  void (*CommandRepeat)(VYRACommandRef command);
  void (*CommandEnd)(VYRACommandRef command);
  /* 58: returns the number of a new terrain probe. */
  int (*CreateProbe)(void);
  /* 59: point, location, normal and velocity hold 3 floats each, local metres and metres per second;
   * returns 1 when terrain was found and the four results were written, else 0. */
  int (*ProbeTerrainXYZ)(int probe, const float* point, float* location, float* normal, float* velocity,
                         int* isWet);
  /* 60: a function that the host exports by name, or null. */
  void* (*FindSymbol)(const char* name);
  /* 61: width in pixels of the first charCount characters. */
  float (*MeasureString)(int fontId, const char* text, int charCount);
  /* 62: item is a position. */
  void (*RemoveMenuItem)(int menu, int item);
  /* 63: null when the object could not be loaded. */
  VYRAObjectRef (*LoadObject)(const char* path);
  /* 64: draws one object once: local metres and degrees. */
  void (*DrawObjects)(VYRAObjectRef object, int lighting, int earthRelative, float x, float y, float z,
                      float heading, float pitch, float roll);
  /* 65: releases one load of an object; must accept null. */
  void (*UnloadObject)(VYRAObjectRef object);
  /* 66: degrees; calls enumerator for each object found and returns how many there were. */
  int (*LookupObjects)(const char* path, float latitude, float longitude, VYRALibraryEnumerator_f enumerator,
                       void* refcon);
  /* 67, 68: load and save one of the host's own data files; fileType is 1 or 2. A path to load
   * may be null. */
  int (*LoadDataFile)(int fileType, const char* path);
  int (*SaveDataFile)(int fileType, const char* path);
  /* 69: starts a load and completes it later, or at once: see VYRAObjectLoaded_f. */
  void (*LoadObjectAsync)(const char* path, VYRAObjectLoaded_f completion, void* delivery);
  /* 70: receives the messages that plugins send to plugin 0 or to everyone. */
  void (*HostReceiveMessage)(VYRAPluginID fromPlugin, int message, void* param);
};

VYRA_LAYOUT_ASSERT(HostServicesIs568Bytes, sizeof(struct VYRAHostServices) == 568);
VYRA_LAYOUT_ASSERT(Slot1At8, offsetof(struct VYRAHostServices, GetScreenSize) == 8);
VYRA_LAYOUT_ASSERT(Slot17At136, offsetof(struct VYRAHostServices, GetNthAircraftModel) == 136);
VYRA_LAYOUT_ASSERT(Slot28At224, offsetof(struct VYRAHostServices, DebugString) == 224);
VYRA_LAYOUT_ASSERT(Slot35At280, offsetof(struct VYRAHostServices, GetFirstNavAid) == 280);
VYRA_LAYOUT_ASSERT(Slot41At328, offsetof(struct VYRAHostServices, CountFMSEntries) == 328);
VYRA_LAYOUT_ASSERT(Slot52At416, offsetof(struct VYRAHostServices, ShowMessage) == 416);
VYRA_LAYOUT_ASSERT(Slot60At480, offsetof(struct VYRAHostServices, FindSymbol) == 480);
VYRA_LAYOUT_ASSERT(Slot70At560, offsetof(struct VYRAHostServices, HostReceiveMessage) == 560);

/* ---- Start, stop, reload ----------------------------------------------------------------------------- */

/**
 * Starts the library: stores the table, writes the library's build date and time into the dataref
 * "sim/version/vyra_build_string" when the host has registered it, loads the plugins below
 * systemPath + "Resources/plugins" and enables them.
 *
 * systemPath: the simulator's root folder, ending in "/". services: see above. self: kept, never used.
 * Result: 18, the revision of this interface. A second call without VYRAShutdownPlugins in between, and a
 * null systemPath or services, change nothing.
 */
VYRA_API int VYRAInitializePlugins(const char* systemPath, struct VYRAHostServices* services, void* self);

/**
 * Disables all plugins, then stops and unloads them all. The library may be started again afterwards. When a
 * plugin's exception leaves it, call it again: it goes on where it ended, and stops no plugin twice.
 */
VYRA_API void VYRAShutdownPlugins(void);

/* VYRAReloadPlugins and VYRAInitialized stand in VYRAPlugin.h: plugins may call them too. */

/* ---- Events -------------------------------------------------------------------------------------------
 *
 * In the order in which a frame uses them; docs/host-guide.md shows a whole frame.
 */

enum {
  VYRA_EVENT_FLIGHT_LOOPS_0 = 0,   /* flight loops of phase 0, at `elapsed`; then a reload, if asked for */
  VYRA_EVENT_FLIGHT_LOOPS_1 = 10,  /* flight loops of phase 1, likewise */
  VYRA_EVENT_VIEW_CHANGED = 1,     /* the host takes its camera back */
  VYRA_EVENT_BROADCAST_101 = 2,    /* message 101 to all plugins */
  VYRA_EVENT_PLANE_LOADED = 3,     /* param: the plane's index as a pointer. Message 102; then, for plane 0,
                                      the aircraft's own plugins are loaded and enabled */
  VYRA_EVENT_BROADCAST_103 = 4,    /* message 103 */
  VYRA_EVENT_UNUSED = 5,           /* nothing */
  VYRA_EVENT_BROADCAST_104 = 6,    /* message 104 */
  VYRA_EVENT_BROADCAST_105 = 7,    /* message 105 */
  VYRA_EVENT_PLANE_UNLOADED = 8,   /* param as for 3. Message 106; then, for plane 0, the aircraft's own
                                      plugins are disabled, stopped and unloaded */
  VYRA_EVENT_COMMAND_REPEAT = 9,   /* held commands are continued */
  VYRA_EVENT_BROADCAST_107 = 11,   /* message 107 */
  VYRA_EVENT_SCENERY_PACKAGE = 12, /* param: const char*, a package's folder ending in "/", whose plugins
                                      are loaded and enabled */
  VYRA_EVENT_BROADCAST_108 = 13    /* message 108 with `param` */
};

/**
 * Tells the library of an event of the host.
 *
 * event: one of the above; any other does nothing. param: as the event says, else ignored. param2: ignored.
 * elapsed: simulation time in seconds, for the two flight-loop events. elapsed2: ignored.
 * Result: 1 always. Before VYRAInitializePlugins nothing happens.
 */
VYRA_API int VYRAEventHook(int event, void* param, void* param2, float elapsed, float elapsed2);

/* ---- Hooks: input, and questions of the host -----------------------------------------------------------
 *
 * Called on the main thread, as they come up. Before VYRAInitializePlugins and after VYRAShutdownPlugins
 * they answer as if no plugin had registered anything.
 *
 * One order matters. Between VYRADoDrawingHook(20, ...), which walks the windows from the back, and the next
 * walk from the front, a plugin that creates a window hides all others but the back-most one. So call
 * VYRACursorHook right after step 20, before anything else that calls plugins: it walks from the front.
 */

/**
 * One step of the host's frame.
 *
 * step: 1 to 26, in the host's own order; each stands for a drawing phase, before or after the host's own
 * drawing of it: 1: phase 0, both; 2, 3: phase 5; 4, 5: 10; 6, 7: 15; 8, 9: 20; 10, 11: 25; 12: 30, both;
 * 13: 35, both; 14, 15: 40; 16, 17: 45; 18: 55, both; 19: 50 before; 20: the drag of this frame, the windows,
 * and 50 after; 21, 22: 101; 23, 24: 100; 25, 26: 102. isReflection: 1 while the host draws a reflection,
 * in which only plugins that asked for it draw; else 0.
 * Result: 0 when a plugin asked the host not to draw the phase that follows, else 1. Steps 12 and 18, and
 * those that come after the host's drawing, always give 1, as do unknown ones.
 */
VYRA_API int VYRADoDrawingHook(int step, int isReflection);

/**
 * The mouse button went down (down not 0) or up (0) at a pixel, y upward. Drags are found by drawing step 20
 * itself, with GetMouseLocation. Result: 0 when a window took it, 1 when it is the host's.
 */
VYRA_API int VYRAMouseClickHook(int x, int y, int down);

/**
 * A key was pressed. key: the character; flags: the modifiers; virtualKey: the key's code; the low 8 bits of
 * the two are used. Result: 0 when a plugin consumed it, 1 when it is the host's.
 */
VYRA_API int VYRAKeyPressHook(int key, int flags, int virtualKey);

/** The mouse is at a pixel. Result: the cursor that a window wants, or 0 for the host's own. */
VYRA_API int VYRACursorHook(int x, int y);

/** Wheel number `wheel` was turned by so many clicks. Result: 0 when a window consumed it, else 1. */
VYRA_API int VYRAScrollWheelHook(int x, int y, int wheel, int clicks);

/**
 * The camera of a frame, once per frame. The seven pointers are to the host's camera, all not null, in the
 * order of VYRACameraPosition; a plugin in control overwrites them. Result: 1 when the host keeps its camera;
 * anything else, and 0 as a rule, when a plugin set it.
 */
VYRA_API int VYRACameraHook(float* x, float* y, float* z, float* pitch, float* heading, float* roll,
                            float* zoom);

/** The user picked an item, by the number that AppendMenuItem returned. Result: 0 handled, 1 not a plugin's.
 */
VYRA_API int VYRAMenuHook(int item);

/**
 * What mark the item at a position of a menu has: -1 none, 0 unchecked, 1 checked, in outState, which is not
 * null. menu: the number that CreateMenu returned. Result: 0 when outState was written, 1 when not.
 */
VYRA_API int VYRACheckMenuHook(int menu, int position, int* outState);

/** Whether the item at a position of a menu can be picked: 0 when not; 1 also for menus of the host. */
VYRA_API int VYRAMenuItemEnabled(int menu, int position);

/* Size in bytes, terminator included, of a buffer in which every path that a plugin may want finds room:
 * longer ones name no file, and no wish is kept for them. */
enum { VYRA_PLANE_PATH_SIZE = 4096 };

/**
 * The host is about to load a plane's model. ioPath: a terminated path, in a buffer of VYRA_PLANE_PATH_SIZE
 * bytes, overwritten when a plugin wants another model. name: not used.
 */
VYRA_API void VYRAUpdatePlaneNameAndPath(int planeIndex, char* name, char* ioPath);

/**
 * How many of `total` planes (the user's included) the host is to run. flag: 0 to let a plugin's limit count;
 * a limit below `total` is passed on as the plugin gave it, negative ones too.
 * Call it once before plugins may set models: it tells the library how many planes there are.
 */
VYRA_API int VYRAGetNumberPlanesToHandle(int total, int flag);

/**
 * A phase of a command. isBegin: 1 when it was pressed; isEnd: 1 when it was released; both 0 while it is
 * held. isBefore: 1 before the host acts on it, and 0 afterwards. Result, before: 0 when a plugin asks the
 * host not to act; otherwise 1.
 */
VYRA_API int VYRACommandHook(VYRACommandRef command, int isBegin, int isEnd, int isBefore);

VYRA_END_DECLARATIONS

#endif
