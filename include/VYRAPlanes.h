/*
 * VYRAPlanes.h: the AI planes, which one plugin at a time may take over, and the models of all planes.
 *
 * Plane 0 is the user's own; the host's AI planes are numbered from 1. Functions marked "holder only" do
 * nothing, in silence, unless the calling plugin holds the AI planes. May be called once the library was
 * started.
 *
 * Paths from and to a plugin without the feature "VYRA_USE_NATIVE_PATHS" are in the host's older encoding,
 * which on this platform is UTF-8 as well.
 */
#ifndef VYRA_PLANES_H
#define VYRA_PLANES_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/* ---- Holding the AI planes -------------------------------------------------------------------------- */

/**
 * The AI planes were given back: called once for each wait, in the order of asking, with the plugin that
 * asked as the calling plugin, while it is enabled; a disabled plugin's wait ends without a call.
 *
 * refcon: as given to VYRAAcquirePlanes. Everyone who waited is told, not only the first, so the planes may
 * be taken by now: call VYRAAcquirePlanes again, which takes them or waits again. It may also give them
 * back at once.
 */
typedef void (*VYRAPlanesReturned_f)(void* refcon);

/**
 * Takes the AI planes for the calling plugin, until it releases them or is disabled or unloaded.
 *
 * aircraft: null, or an array of full model paths closed by a null pointer: path k is the model wanted for
 * plane k, "" for no wish; a path of 4,096 bytes or more names no file and is no wish either. Copied. Entry 0
 * is not used. Nothing is loaded now: the host asks when it loads a plane. callback: called when somebody
 * else gives the planes back; null does not wait. Waiting several times gets as many calls. refcon: passed to
 * it.
 *
 * Result: 1 when the caller holds the planes, freshly with no limit set; a caller that held them before
 * keeps its wishes and its limit, and `aircraft` is ignored. 0 when another plugin holds them.
 * [started]
 */
VYRA_API int VYRAAcquirePlanes(char** aircraft, VYRAPlanesReturned_f callback, void* refcon);

/**
 * Holder only. Gives the AI planes back: forgets the wishes and the limit, writes 0 to the dataref
 * "sim/private/net_disables/ai_loc[N]" of each AI plane, and tells every plugin that waits, before it
 * returns. When one of them throws, those behind it wait for the next time.
 * [started]
 */
VYRA_API void VYRAReleasePlanes(void);

/**
 * Holder only. How many planes, the user's included, are to be active at most; -1 lifts the limit. Any
 * number is taken as it is, and the host is told the smaller of it and the number of planes.
 * [started]
 */
VYRA_API void VYRASetActiveAircraftCount(int count);

/**
 * Writes 1 to the dataref "sim/private/net_disables/ai_loc[N]" of a plane, N being planeIndex: the host's
 * own AI stops flying it. Open to every plugin. Nothing happens where the host has no such dataref.
 * [started]
 */
VYRA_API void VYRADisableAIForPlane(int planeIndex);

/**
 * Counts the planes. Open to every plugin. Each pointer may be null.
 *
 * outTotal: the host's planes, the user's included. outActive: the same, or the holder's limit where that is
 * smaller. outController: the ID of the plugin that holds the AI planes, or -1.
 * [started]
 */
VYRA_API void VYRACountAircraft(int* outTotal, int* outActive, VYRAPluginID* outController);

/**
 * Holder only. Draws a plane; all arguments are handed to the host as they are. From draw callbacks.
 *
 * x, y, z: its position. pitch, roll, yaw: its angles. full: 1 for the whole plane, 0 for a simpler picture.
 * drawingState: the host's record of flaps, gear and so on. Units and layout are the host's.
 * [drawing]
 */
VYRA_API void VYRADrawAircraft(int planeIndex, float x, float y, float z, float pitch, float roll, float yaw,
                               int full, void* drawingState);

/* ---- Models ----------------------------------------------------------------------------------------- */

/**
 * Holder only. Sets the model wanted for a plane, and has the host load it now when the host has said that
 * it has such a plane.
 *
 * planeIndex: from 0; a negative one does nothing. path: the model's full path, copied; null, and a path of
 * 4,096 bytes or more, which names no file, do nothing; "" takes the wish back, though the host is still
 * asked to load it.
 * [started]
 */
VYRA_API void VYRASetAircraftModel(int planeIndex, const char* path);

/**
 * A plane's model. Open to every plugin. Which planes there are, and what is written for others, is the
 * host's to say.
 *
 * outFileName: null, or a buffer of 256 bytes for the model's file name. outPath: null, or a buffer of 512
 * bytes for its full path.
 * [started]
 */
VYRA_API void VYRAGetNthAircraftModel(int planeIndex, char* outFileName, char* outPath);

/**
 * Loads a model into the user's plane. Open to every plugin.
 *
 * path: the model's full path; null does nothing. The host is told as well what follows the last "/"; of a
 * path without one, that is all but the first character.
 * [started]
 */
VYRA_API void VYRASetUsersAircraft(const char* path);

/**
 * Puts the user's plane on an airport. Open to every plugin. The code goes to the host as it is.
 * [started]
 */
VYRA_API void VYRAPlaceUserAtAirport(const char* airportCode);

/** Holder only. Starts the user's plane anew where it is. Hosts of a version below 568 cannot. [started] */
VYRA_API void VYRAReinitUsersPlane(void);

VYRA_END_DECLARATIONS

#endif
