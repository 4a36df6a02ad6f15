/*
 * VYRANavigation.h: the host's navigation database, flight-management system (FMS) and GPS.
 *
 * Every function hands its arguments to the host as they are and returns the host's answer. The host defines
 * the reference that stands for no navaid, the type codes, what each number and each pointer means and in
 * which unit, which null pointers it accepts, how long its texts get, and what it does with an entry or a
 * reference that it does not have. May be called once the library was started.
 */
#ifndef VYRA_NAVIGATION_H
#define VYRA_NAVIGATION_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/* ---- The database -------------------------------------------------------------------------------------
 *
 * A navaid is known by a reference, an int of the host. Types are bits where several may be asked for.
 */

/** The first navaid of the database, in the host's order. [started] */
VYRA_API int VYRAGetFirstNavAid(void);

/** The navaid after this one. [started] */
VYRA_API int VYRAGetNextNavAid(int navAid);

/** The first navaid of a type. [started] */
VYRA_API int VYRAFindFirstNavAidOfType(int type);

/** The last navaid of a type. [started] */
VYRA_API int VYRAFindLastNavAidOfType(int type);

/**
 * The navaid that fits best.
 *
 * name, ident: terminated texts to be found in its name and its identifier. latitude, longitude: one float
 * each, a place. frequency: one int. Each null where it does not matter, if the host allows it. type: the
 * types to search among.
 * [started]
 */
VYRA_API int VYRAFindNavAid(const char* name, const char* ident, float* latitude, float* longitude,
                            int* frequency, int type);

/**
 * What is known of a navaid.
 *
 * outType, outFrequency: one int each. outLatitude, outLongitude, outElevation, outHeading: one float each.
 * outIdent, outName: buffers for terminated texts. outInRegion: one byte.
 * [started]
 */
VYRA_API void VYRAGetNavAidInfo(int navAid, int* outType, float* outLatitude, float* outLongitude,
                                float* outElevation, int* outFrequency, float* outHeading, char* outIdent,
                                char* outName, char* outInRegion);

/* ---- The flight plan: entries of the FMS, by index ---------------------------------------------------- */

/** The number of entries. [started] */
VYRA_API int VYRACountFMSEntries(void);

/** The entry that the user looks at. [started] */
VYRA_API int VYRAGetDisplayedFMSEntry(void);

/** The entry that the plane flies to. [started] */
VYRA_API int VYRAGetDestinationFMSEntry(void);

/** Shows an entry to the user. [started] */
VYRA_API void VYRASetDisplayedFMSEntry(int index);

/** Flies to an entry. [started] */
VYRA_API void VYRASetDestinationFMSEntry(int index);

/**
 * What an entry holds.
 *
 * outType, outNavAid, outAltitude: one int each. outIdent: a buffer for a terminated text. outLatitude,
 * outLongitude: one float each.
 * [started]
 */
VYRA_API void VYRAGetFMSEntryInfo(int index, int* outType, char* outIdent, int* outNavAid, int* outAltitude,
                                  float* outLatitude, float* outLongitude);

/** Makes an entry of a navaid, at an altitude. [started] */
VYRA_API void VYRASetFMSEntryInfo(int index, int navAid, int altitude);

/** Makes an entry of a place, at an altitude. [started] */
VYRA_API void VYRASetFMSEntryLatLon(int index, float latitude, float longitude, int altitude);

/** Empties an entry. [started] */
VYRA_API void VYRAClearFMSEntry(int index);

/* ---- The GPS ------------------------------------------------------------------------------------------ */

/** The type of the GPS's destination. [started] */
VYRA_API int VYRAGetGPSDestinationType(void);

/** The navaid that is the GPS's destination. [started] */
VYRA_API int VYRAGetGPSDestination(void);

VYRA_END_DECLARATIONS

#endif
