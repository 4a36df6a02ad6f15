/*
 * VYRAScenery.h: the terrain under a point, and scenery objects: loading, drawing and finding them.
 * Positions are in the host's local coordinates; units are the host's. May be called once the library was
 * started.
 */
#ifndef VYRA_SCENERY_H
#define VYRA_SCENERY_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/* ---- Terrain probes --------------------------------------------------------------------------------- */

/* A probe. The library makes and owns them. The handle of a destroyed probe may come back for a new one. */
typedef struct VYRAProbe_t* VYRAProbeRef;

/* The type of probe: the terrain straight below or above a point. There is no other. */
#define VYRA_PROBE_VERTICAL 0

/* Results of a probing. */
#define VYRA_PROBE_HIT 0    /* the host found terrain */
#define VYRA_PROBE_ERROR 1  /* no such probe, a probe of another type, or a record of another size */
#define VYRA_PROBE_MISSED 2 /* there is no terrain */

/* What a probing found. Set `size` before; the host writes the rest. */
typedef struct VYRAProbeInfo {
  int size;          /* sizeof(VYRAProbeInfo): 44 */
  float location[3]; /* x, y, z of the terrain */
  float normal[3];   /* the direction in which its surface looks */
  float velocity[3]; /* its own movement: the deck of a ship */
  int isWet;         /* not 0: water */
} VYRAProbeInfo;

VYRA_LAYOUT_ASSERT(ProbeInfoIs44Bytes, sizeof(VYRAProbeInfo) == 44);
VYRA_LAYOUT_ASSERT(ProbeInfoLocationAt4, offsetof(VYRAProbeInfo, location) == 4);
VYRA_LAYOUT_ASSERT(ProbeInfoNormalAt16, offsetof(VYRAProbeInfo, normal) == 16);
VYRA_LAYOUT_ASSERT(ProbeInfoVelocityAt28, offsetof(VYRAProbeInfo, velocity) == 28);
VYRA_LAYOUT_ASSERT(ProbeInfoIsWetAt40, offsetof(VYRAProbeInfo, isWet) == 40);

/**
 * Makes a probe of the calling plugin, which lives until it is destroyed or its plugin is unloaded. Make
 * few and keep them: the host's side of a probe is reused, but never freed.
 *
 * type: any number, unchecked; every probing with another than VYRA_PROBE_VERTICAL is an error.
 * Result: the handle, never null.
 * [started]
 */
VYRA_API VYRAProbeRef VYRACreateProbe(int type);

/**
 * Destroys a probe, also another plugin's. Any pointer may be passed: one that is no probe does nothing.
 * [started]
 */
VYRA_API void VYRADestroyProbe(VYRAProbeRef probe);

/**
 * Asks for the terrain at a point.
 *
 * probe: any pointer may be passed. x, y, z: the point. outInfo: the caller's record with its size set; after
 * VYRA_PROBE_ERROR, which a null one gives too, it is untouched.
 * Result: one of VYRA_PROBE_*. Errors are not reported otherwise.
 * [started]
 */
VYRA_API int VYRAProbeTerrainXYZ(VYRAProbeRef probe, float x, float y, float z, VYRAProbeInfo* outInfo);

/* ---- Objects ------------------------------------------------------------------------------------------
 *
 * An object belongs to the plugin that loaded it, once for each time it did, and each load needs an unload.
 * What is left when the plugin is unloaded is released then. Loading the same path again may give the same
 * handle again.
 */

/* Where to draw an object. */
typedef struct VYRADrawInfo {
  int size;      /* sizeof(VYRADrawInfo): 28 */
  float x;       /* the place, in local coordinates */
  float y;       /* likewise */
  float z;       /* likewise */
  float pitch;   /* an angle, in the host's unit */
  float heading; /* likewise */
  float roll;    /* likewise */
} VYRADrawInfo;

VYRA_LAYOUT_ASSERT(DrawInfoIs28Bytes, sizeof(VYRADrawInfo) == 28);
VYRA_LAYOUT_ASSERT(DrawInfoPitchAt16, offsetof(VYRADrawInfo, pitch) == 16);
VYRA_LAYOUT_ASSERT(DrawInfoHeadingAt20, offsetof(VYRADrawInfo, heading) == 20);

/**
 * Loads an object, and returns when it is there.
 *
 * path: what paths are relative to is the host's to say; null loads nothing.
 * Result: the object, which the calling plugin owns, or null when it could not be loaded.
 * [started]
 */
VYRA_API VYRAObjectRef VYRALoadObject(const char* path);

/**
 * An asynchronous load has finished. Called once for each, with the plugin that asked as the calling plugin,
 * while it is enabled; a disabled plugin is called once it is enabled, the load that finished last first;
 * a plugin that was unloaded never, and its object is released.
 *
 * object: null when it could not be loaded. The plugin owns it from the moment the callback has returned:
 * inside the callback it cannot be unloaded yet, nor drawn by a plugin with an error callback.
 * refcon: as given to VYRALoadObjectAsync.
 */
typedef void (*VYRAObjectReady_f)(VYRAObjectRef object, void* refcon);

/**
 * Starts to load an object.
 *
 * path: as for VYRALoadObject; null counts as a load that failed. callback: told of the end, possibly before
 * this function returns. Null: nobody is told, and the plugin owns the object all the same. refcon: passed to
 * the callback; what it points to must live until then.
 *
 * The library trusts the host to complete each load once: a second completion of the same load is not
 * recognised.
 * [started]
 */
VYRA_API void VYRALoadObjectAsync(const char* path, VYRAObjectReady_f callback, void* refcon);

/**
 * Draws an object at several places, one after the other. To be called from draw callbacks.
 *
 * locations: `count` records; a count below 1 and a null array draw nothing. lighting: 1 for the object's
 * night lighting, else 0. earthRelative: 1 when the angles are relative to the earth's surface at each place,
 * 0 when to the local axes. Both go to the host as they are.
 *
 * Arguments are checked only for a plugin with an error callback; for any other, an object that it does not
 * own goes to the host, and sizes are not looked at. Errors, after which nothing at all is drawn: "Illegal
 * object, or object not owned by this plugin." and "Struct size mismatch for VYRADrawObjects".
 * [drawing]
 */
VYRA_API void VYRADrawObjects(VYRAObjectRef object, int count, const VYRADrawInfo* locations, int lighting,
                              int earthRelative);

/**
 * Gives back one load of an object by the calling plugin.
 * Error: when it has none, "Unknown object for VYRAUnloadObject"; nothing is released.
 * [started]
 */
VYRA_API void VYRAUnloadObject(VYRAObjectRef object);

/**
 * Finds objects in the host's library. All arguments are handed to the host as they are.
 *
 * path: a path of the library. latitude, longitude: a place; what is found may depend on it.
 * enumerator: called by the host with the path of each object found, before this function returns. refcon:
 * passed to it. Result: the host's count of them.
 * [started]
 */
VYRA_API int VYRALookupObjects(const char* path, float latitude, float longitude,
                               VYRALibraryEnumerator_f enumerator, void* refcon);

VYRA_END_DECLARATIONS

#endif
