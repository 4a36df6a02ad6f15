/*
 * VYRAHost.h: what a simulator that embeds the library fills in and calls: the host service table and the
 * host entry points. docs/host-guide.md tells the same as a story.
 *
 * The contract in short:
 *   1. Register the simulator's own datarefs (VYRADataAccess.h).
 *   2. Fill every slot of a VYRAHostServices and call VYRAInitializePlugins once.
 *   3. Call events and hooks, always from the thread that called VYRAInitializePlugins.
 *   4. Call VYRAShutdownPlugins once before the simulator goes.
 * A plugin's C++ exception may come out of any of these functions: VYRADefs.h says what holds then.
 *
 * An event may be called from inside a service, while a plugin's code is running: plugins may be loaded
 * and unloaded that way, but the modules of unloaded ones stay in memory until the outermost call into
 * the library returns, and a reload waits for a pass that is not nested. As long as there is an exception (on
 * its way, or in the hands of a catch block) modules stay in memory as well, as it may be of a type that
 * lives in one: they are closed by the first call after it.
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
 * outlive the library's use of it. A service throws nothing of its own (VYRADefs.h tells of exceptions), and
 * may lead to any event or hook.
 *
 * What a service may rely on is said of its pointers in one notation:
 *
 *   name!      never null
 *   name?      a plugin's own pointer, passed on unchecked: it may be null, or anything else
 *   name![N]   never null, and points to N of its type (a plugin's own, if the plugin keeps to its header)
 *   name?[N]   a plugin's own pointer, which is to point to N of its type
 *
 * Texts are terminated, UTF-8 unless a service says otherwise, and valid during the call only. Numbers and
 * handles come from plugins unchecked, negative and unknown ones too, unless a service says otherwise. Units
 * are the simulator's to define and to tell the authors of plugins.
 */
struct VYRAHostServices {
  /* Revision of the table: above 2, ShowMessage is called; above 3, ShowLoadingStatus as well. */
  int serviceTableRevision;
  /* The simulator's version: above 567, DestroyMenu and ReinitUsersPlane are called. */
  int hostVersion;

  /* 1: the size of the screen in pixels. outWidth?, outHeight?. */
  void (*GetScreenSize)(int* outWidth, int* outHeight);
  /* 2: the position of the mouse in pixels, y upward. flag is 1 when a plugin asks: outX?, outY?; 0 when the
   * library does: outX!, outY!. */
  void (*GetMouseLocation)(int* outX, int* outY, int flag);
  /* 3: sets the host's seven drawing-state switches. */
  void (*SetGraphicsState)(int switch1, int switch2, int switch3, int switch4, int switch5, int switch6,
                           int switch7);
  /* 4: binds a texture to a texture unit. */
  void (*BindTexture2d)(int textureNumber, int textureUnit);
  /* 5: makes `count` texture numbers. outTextureIds?[count]. */
  void (*GenerateTextureNumbers)(int* outTextureIds, int count);
  /* 6: the number of one of the host's own textures. */
  int (*GetTexture)(int textureId);
  /* 7: from the world's coordinates to local ones. outX?, outY?, outZ?. */
  void (*WorldToLocal)(double latitude, double longitude, double altitude, double* outX, double* outY,
                       double* outZ);
  /* 8: and back. outLatitude?, outLongitude?, outAltitude?. */
  void (*LocalToWorld)(double x, double y, double z, double* outLatitude, double* outLongitude,
                       double* outAltitude);
  /* 9: draws a dark box behind text; edges in pixels, y upward. */
  void (*DrawTranslucentDarkBox)(int left, int top, int right, int bottom);
  /* 10: draws a text at a pixel. colorRgb?[3], text?, wordWrapWidth?: null for no wrapping, else a width in
   * pixels. */
  void (*DrawString)(float* colorRgb, int x, int y, char* text, int* wordWrapWidth, int fontId);
  /* 11: draws a number at a pixel, with so many digits before the point and decimals behind it; showSign not
   * 0: with its sign. colorRgb?[3]. */
  void (*DrawNumber)(float* colorRgb, int x, int y, double value, int digits, int decimals, int showSign,
                     int fontId);
  /* 12: the size of a font's characters in pixels, and whether it has digits alone. outCharWidth?,
   * outCharHeight?, outDigitsOnly?. */
  void (*GetFontDimensions)(int fontId, int* outCharWidth, int* outCharHeight, int* outDigitsOnly);
  /* 13: simulation time in seconds. */
  float (*GetElapsedTime)(void);
  /* 14: the camera: a position, three angles, a zoom. outX!, outY!, outZ!, outPitch!, outHeading!, outRoll!,
   * outZoom!. */
  void (*ReadCameraPosition)(float* outX, float* outY, float* outZ, float* outPitch, float* outHeading,
                             float* outRoll, float* outZoom);
  /* 15: draws a plane at a position, with three angles. drawingState?. Called for the plugin that holds the
   * AI planes alone. */
  void (*DrawAircraft)(int planeIndex, float x, float y, float z, float pitch, float roll, float yaw,
                       int full, void* drawingState);
  /* 16: loads a model into a plane; planeIndex is 0 for the user's, or below the number of planes that
   * VYRAGetNumberPlanesToHandle was told. path!: the model's full path, of any length from
   * VYRASetUsersAircraft, below VYRA_PLANE_PATH_SIZE bytes from VYRASetAircraftModel. fileName!: its file
   * name from the former, the full path again from the latter. */
  void (*SetAircraftModel)(int planeIndex, const char* path, const char* fileName);
  /* 17: the model of a plane; both texts must be written, "" for a plane that there is not. outPath![256],
   * outFileName![256]. */
  void (*GetNthAircraftModel)(int planeIndex, char* outPath, char* outFileName);
  /* 18: returns the number of planes, the user's included. What is written to the pointers is not used.
   * outTotal!, outActive!, outController!. */
  int (*CountAircraft)(int* outTotal, int* outActive, int* outController);
  /* 19: puts the user's plane on an airport. airportCode?. */
  void (*PlaceUserAtAirport)(const char* airportCode);
  /* 20: presses a key in the user's stead. */
  void (*SimulateKeyPress)(int keyType, int key);
  /* 21: speaks a text. text?. */
  void (*SpeakString)(const char* text);
  /* 22: does what a key of the host's own list does. */
  void (*CommandKeyStroke)(int key);
  /* 23: buttons are pressed or released, or are still held. buttons!: their numbers, closed by a 0. up is 0
   * for a press, 1 for a release; pass 0 or 1 is the first or second of the two passes of a change. What is
   * held comes in each frame, in pass 1 of a press. */
  void (*CommandButtonPress)(const int* buttons, int up, int pass);
  /* 24: the host's root folder, ending in "/". outPath![512]. */
  void (*GetSystemPath)(char* outPath);
  /* 25: the host's preferences file. outPath![512]. */
  void (*GetPrefsPath)(char* outPath);
  /* 26: the host's version and its ID, in its own counting. outHostVersion!, outHostId!. */
  void (*GetVersions)(int* outHostVersion, int* outHostId);
  /* 27: the host's language code. */
  int (*GetLanguage)(void);
  /* 28: appends a text to the host's log as it stands. text!. */
  void (*DebugString)(const char* text);
  /* 29: makes a menu and returns the host's number of it. parentMenu is a number returned before, or 0 for
   * the menu bar. parentItem is a position, or -1 when a plugin named an item that it does not have; in the
   * menu bar it is a plugin's own number. name!. After a shutdown and a new start, the menus of before mean
   * nothing. */
  int (*CreateMenu)(int parentMenu, int parentItem, const char* name);
  /* 30: appends an item and returns the host's number of it. menu is a number that CreateMenu returned, here
   * and in 31, 32 and 62; position counts all items of the menu from 0. name!. */
  int (*AppendMenuItem)(int menu, int position, const char* name, int flag);
  /* 31: renames an item; "" when it is gone, though it keeps its place. item is a position, or -1 when a
   * plugin named one that it does not have. name!. */
  void (*SetMenuItemName)(int menu, int item, const char* name, int flag);
  /* 32: destroys a menu; called when hostVersion is above 567. */
  void (*DestroyMenu)(int menu);
  /* 33: starts the user's plane anew where it is; called with 208 and 201, when hostVersion is above 567. */
  void (*ReinitUsersPlane)(int argument1, int argument2);
  /* 34: loads the scenery anew. */
  void (*ReloadScenery)(void);

  /* 35 to 40: the navigation database. A navaid is known by a number of the host's, one of which stands for
   * none; types are the host's too, as bits where several may be asked for.
   *
   * 35: the first navaid. */
  int (*GetFirstNavAid)(void);
  /* 36: the one after this. */
  int (*GetNextNavAid)(int navAid);
  /* 37: the first of a type. */
  int (*FindFirstNavAidOfType)(int type);
  /* 38: the last of a type. */
  int (*FindLastNavAidOfType)(int type);
  /* 39: the one that fits best. name?, ident?, latitude?, longitude?, frequency?. */
  int (*FindNavAid)(const char* name, const char* ident, float* latitude, float* longitude, int* frequency,
                    int type);
  /* 40: what is known of one. outType?, outLatitude?, outLongitude?, outElevation?, outFrequency?,
   * outHeading?, outIdent?, outName?, outInRegion?; how long the texts get is the host's to say. */
  void (*GetNavAidInfo)(int navAid, int* outType, float* outLatitude, float* outLongitude,
                        float* outElevation, int* outFrequency, float* outHeading, char* outIdent,
                        char* outName, char* outInRegion);

  /* 41 to 49: the flight plan of the flight-management system, by entry index.
   *
   * 41: how many entries it has. */
  int (*CountFMSEntries)(void);
  /* 42: the entry that the user looks at. */
  int (*GetDisplayedFMSEntry)(void);
  /* 43: the entry that the plane flies to. */
  int (*GetDestinationFMSEntry)(void);
  /* 44: shows an entry to the user. */
  void (*SetDisplayedFMSEntry)(int index);
  /* 45: flies to an entry. */
  void (*SetDestinationFMSEntry)(int index);
  /* 46: what an entry holds. outType?, outIdent?, outNavAid?, outAltitude?, outLatitude?, outLongitude?; how
   * long the text gets is the host's to say. */
  void (*GetFMSEntryInfo)(int index, int* outType, char* outIdent, int* outNavAid, int* outAltitude,
                          float* outLatitude, float* outLongitude);
  /* 47: makes an entry of a navaid. */
  void (*SetFMSEntryInfo)(int index, int navAid, int altitude);
  /* 48: makes an entry of a place. */
  void (*SetFMSEntryLatLon)(int index, float latitude, float longitude, int altitude);
  /* 49: empties an entry. */
  void (*ClearFMSEntry)(int index);
  /* 50: the type of the GPS's destination. */
  int (*GetGPSDestinationType)(void);
  /* 51: the navaid that is the GPS's destination. */
  int (*GetGPSDestination)(void);

  /* 52: shows four lines to the user, the last two empty, in the middle of a reload; called when
   * serviceTableRevision is above 2. line1!, line2!, line3!, line4!. */
  void (*ShowMessage)(const char* line1, const char* line2, const char* line3, const char* line4);
  /* 53: shows progress while plugins load; called when serviceTableRevision is above 3. text!. */
  void (*ShowLoadingStatus)(const char* text);
  /* 54: the command of this name; when there is none, a new one if create is 1, null if it is 0. name!,
   * description?, which is always null when create is 0. */
  VYRACommandRef (*FindCommand)(const char* name, const char* description, int create);
  /* 55: a command is pressed. command?, which is any pointer that a plugin gave, here and in 56 and 57. */
  void (*CommandBegin)(VYRACommandRef command);
  /* 56: a command that a plugin pressed is still held. command?. */
  void (*CommandRepeat)(VYRACommandRef command);
  /* 57: a command is released, also one that nobody pressed. command?. */
  void (*CommandEnd)(VYRACommandRef command);
  /* 58: makes a terrain probe and returns the host's number of it. Probes are never given back: the library
   * uses those of destroyed ones again. */
  int (*CreateProbe)(void);
  /* 59: the terrain at a point: where it is, in which direction its surface looks, how it moves, and whether
   * it is water. probe is a number that CreateProbe returned. point![3], location![3], normal![3],
   * velocity![3], isWet!. Returns 1 when terrain was found and the four results were written, else 0. */
  int (*ProbeTerrainXYZ)(int probe, const float* point, float* location, float* normal, float* velocity,
                         int* isWet);
  /* 60: a function that the host exports by name, or null. name?. */
  void* (*FindSymbol)(const char* name);
  /* 61: the width in pixels of the first charCount characters. text?. */
  float (*MeasureString)(int fontId, const char* text, int charCount);
  /* 62: removes an item; those behind it move up. item is a position that there is. */
  void (*RemoveMenuItem)(int menu, int item);
  /* 63: loads an object; null when it could not be loaded. path!. */
  VYRAObjectRef (*LoadObject)(const char* path);
  /* 64: draws an object once, at a position with three angles. object?: any pointer from a plugin without an
   * error callback, and otherwise an object that it had loaded when it began to draw. */
  void (*DrawObjects)(VYRAObjectRef object, int lighting, int earthRelative, float x, float y, float z,
                      float heading, float pitch, float roll);
  /* 65: releases one load of an object. object is one that was loaded and not released since, or null. */
  void (*UnloadObject)(VYRAObjectRef object);
  /* 66: calls enumerator with refcon for each object found, before it returns, and returns how many there
   * were. path?, enumerator?, refcon?. */
  int (*LookupObjects)(const char* path, float latitude, float longitude, VYRALibraryEnumerator_f enumerator,
                       void* refcon);
  /* 67: loads one of the host's own data files. fileType is 1 or 2. path?. */
  int (*LoadDataFile)(int fileType, const char* path);
  /* 68: saves one. fileType is 1 or 2. path!. */
  int (*SaveDataFile)(int fileType, const char* path);
  /* 69: starts to load an object, and completes it later or at once: see VYRAObjectLoaded_f. path!,
   * completion!, delivery!. */
  void (*LoadObjectAsync)(const char* path, VYRAObjectLoaded_f completion, void* delivery);
  /* 70: receives the messages that plugins send to plugin 0 or to everyone, and the host's own broadcasts.
   * param?. */
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
 * Result: 18, the revision of this interface, always. Nothing changes when systemPath or services is null,
 * when there was no VYRAShutdownPlugins since the last start, and when something of the life before is not
 * over yet: in the middle of a start, a load, a reload or a shutdown, and as long as a module of it is still
 * open.
 * [host]
 */
VYRA_API int VYRAInitializePlugins(const char* systemPath, struct VYRAHostServices* services, void* self);

/**
 * Disables all plugins, then stops and unloads them all. The library may be started again afterwards. When a
 * plugin's exception leaves it, call it again until none does: it goes on where it ended, and stops no plugin
 * twice. So do VYRA_EVENT_PLANE_UNLOADED and, for a reload, the next pass.
 * [host]
 */
VYRA_API void VYRAShutdownPlugins(void);

/* VYRAReloadPlugins and VYRAInitialized stand in VYRAPlugin.h: plugins may call them too. */

/**
 * Says whether a module is to be loaded: 0 to pass it over, as if its file were not there.
 *
 * path: that of the file, which is there, and valid during the call only; what it is, or whether it can be
 * opened at all, is not known yet. refcon: as given to VYRASetModuleFilter. It is asked each time that the
 * module would be loaded, so again with each reload. It must not throw, and must call no function of the
 * library other than those of VYRAWatch.h.
 */
typedef int (*VYRAModuleFilter_f)(const char* path, void* refcon);

/**
 * Sets the filter that is asked about every module before it is opened, in place of the one before; null
 * takes it away. It stays through shutdown and start. Modules that are loaded already are not asked about.
 *
 * A module that is passed over leaves no line in the log. In a plugin folder whose 64/lin.vyp is passed over,
 * lin.vyp is what is looked for next.
 *
 * Main thread only; at any time, before the start too.
 * [host]
 */
VYRA_API void VYRASetModuleFilter(VYRAModuleFilter_f filter, void* refcon);

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
 * Result: 1 always. While the library is not started, nothing is loaded; everything else is as ever.
 * [host]
 */
VYRA_API int VYRAEventHook(int event, void* param, void* param2, float elapsed, float elapsed2);

/* ---- Hooks: input, and questions of the host -----------------------------------------------------------
 *
 * Called on the main thread, as they come up. Before VYRAInitializePlugins and after VYRAShutdownPlugins
 * only what the host itself has registered answers.
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
 * [host]
 */
VYRA_API int VYRADoDrawingHook(int step, int isReflection);

/**
 * The mouse button went down (down not 0) or up (0) at a pixel, y upward. Drags are found by drawing step 20
 * itself, with GetMouseLocation. Result: 0 when a window took it, 1 when it is the host's.
 * [host]
 */
VYRA_API int VYRAMouseClickHook(int x, int y, int down);

/**
 * A key was pressed. key: the character; flags: the modifiers; virtualKey: the key's code; the low 8 bits of
 * the two are used. Result: 0 when a plugin consumed it, 1 when it is the host's.
 * [host]
 */
VYRA_API int VYRAKeyPressHook(int key, int flags, int virtualKey);

/** The mouse is at a pixel. Result: the cursor that a window wants, or 0 for the host's own. [host] */
VYRA_API int VYRACursorHook(int x, int y);

/** Wheel number `wheel` was turned by so many clicks. Result: 0 when a window consumed it, else 1. [host] */
VYRA_API int VYRAScrollWheelHook(int x, int y, int wheel, int clicks);

/**
 * The camera of a frame, once per frame. The seven pointers are to the host's camera, all not null, in the
 * order of VYRACameraPosition; a plugin in control overwrites them. Result: 1 when the host keeps its camera;
 * anything else, and 0 as a rule, when a plugin set it.
 * [host]
 */
VYRA_API int VYRACameraHook(float* x, float* y, float* z, float* pitch, float* heading, float* roll,
                            float* zoom);

/** The user picked an item, by the number that AppendMenuItem returned. Result: 0 handled, 1 not a plugin's.
 * [host]
 */
VYRA_API int VYRAMenuHook(int item);

/**
 * What mark the item at a position of a menu has: -1 none, 0 unchecked, 1 checked, in outState, which is not
 * null. menu: the number that CreateMenu returned. Result: 0 when outState was written, 1 when not.
 * [host]
 */
VYRA_API int VYRACheckMenuHook(int menu, int position, int* outState);

/**
 * Whether the item at a position of a menu can be picked: 0 when not; 1 also for menus of the host.
 * [host]
 */
VYRA_API int VYRAMenuItemEnabled(int menu, int position);

/* Size in bytes, terminator included, of a buffer in which every path that a plugin may want finds room:
 * longer ones name no file, and no wish is kept for them. */
enum { VYRA_PLANE_PATH_SIZE = 4096 };

/**
 * The host is about to load a plane's model. ioPath: a terminated path, in a buffer of VYRA_PLANE_PATH_SIZE
 * bytes, overwritten when a plugin wants another model. name: not used.
 * [host]
 */
VYRA_API void VYRAUpdatePlaneNameAndPath(int planeIndex, char* name, char* ioPath);

/**
 * How many of `total` planes (the user's included) the host is to run. flag: 0 to let a plugin's limit count;
 * a limit below `total` is passed on as the plugin gave it, negative ones too.
 * Call it once before plugins may set models: it tells the library how many planes there are.
 * [host]
 */
VYRA_API int VYRAGetNumberPlanesToHandle(int total, int flag);

/**
 * A phase of a command. isBegin: 1 when it was pressed; isEnd: 1 when it was released; both 0 while it is
 * held. isBefore: 1 before the host acts on it, and 0 afterwards. Result, before: 0 when a plugin asks the
 * host not to act; otherwise 1.
 * [host]
 */
VYRA_API int VYRACommandHook(VYRACommandRef command, int isBegin, int isEnd, int isBefore);

VYRA_END_DECLARATIONS

#endif
