/*
 * VYRADefs.h: what every header of the interface shares: the export macros, the opaque handles and the
 * plugin ID. Plain C99; include it through the header of the family that you use.
 *
 * Everything in this interface runs on the simulator's main thread, and no function may be called from
 * another one, unless it says so. None returns an error code: misuse is reported in a sentence to the calling
 * plugin's error callback (VYRASetErrorCallback, VYRAPlugin.h) and otherwise has no effect.
 *
 * When a function may be called stands at the end of its comment, in one notation:
 *
 *   [always]      by a plugin from any of its calls, its module's constructors included, and by the host
 *                 at any time, before the start and after the shutdown too
 *   [started]     by a plugin likewise, and by the host once it has started the library
 *   [drawing]     as [started]; what it draws or sets up shows when it is called from draw callbacks and
 *                 from the drawing of windows
 *   [host]        by the host alone, at the times that the comment tells
 *   [any thread]  as [always], from other threads and from signal handlers too
 *
 * Exceptions of C++. The library throws none of its own while memory lasts, and keeps none to itself: one
 * that a callback lets out passes through the library, and through the plugin or the service of the host
 * whose call led to the callback, on its way to the call of the host that began it all. What that call still
 * had to do for others is not done, except that all plugins are loaded and enabled which are to be, and one
 * that is disabled is so in all that belongs to it, before the first exception of theirs goes on; otherwise
 * the library is left as if the callback had returned, so that the next frame can be flown, and a shutdown,
 * an unloading or a reload goes on where it ended when it is called again. So a plugin should let none out.
 * Least of all from a constructor of its module: the plugin is turned down as one whose start threw, but its
 * module stays in memory, and the system's loader stays locked for all other threads. A host catches them
 * around its calls into the library, and looks at them there, as an exception's type may lie in the module
 * that threw it: modules stay open as long as an exception is on its way or in a catch block. A host in C
 * ends with one. Services of the host and functions of a watcher throw none of their own.
 */
#ifndef VYRA_DEFS_H
#define VYRA_DEFS_H

#include <stddef.h>
#include <stdint.h>

/* C linkage in either language, for one declaration and for those between a begin and an end. */
#ifdef __cplusplus
#define VYRA_EXTERN_C extern "C"
#define VYRA_BEGIN_DECLARATIONS extern "C" {
#define VYRA_END_DECLARATIONS }
#else
#define VYRA_EXTERN_C
#define VYRA_BEGIN_DECLARATIONS
#define VYRA_END_DECLARATIONS
#endif

/* Marks a function of libVYRA.so.2. Where the compiler can, a call of it goes straight to the address that
 * the loader filled in, without the usual detour through a jump in the caller's own module. */
#ifdef __has_attribute
#if __has_attribute(noplt)
#define VYRA_API __attribute__((visibility("default"), noplt))
#endif
#endif
#ifndef VYRA_API
#define VYRA_API __attribute__((visibility("default")))
#endif

/* Marks the five functions that a plugin module exports, so that they stay visible in a module that is
 * built with hidden visibility, and keep their plain names when it is written in C++. */
#define VYRA_PLUGIN_EXPORT VYRA_EXTERN_C __attribute__((visibility("default")))

/* Checks a condition at compile time in C99 as well as in C++: the array has a negative size when the
 * condition is false. `name` must be unique in its file and says what failed. */
#define VYRA_LAYOUT_ASSERT(name, condition) typedef char VYRALayoutAssert_##name[(condition) ? 1 : -1]

/* A plugin's number: its place in the registry. The host is plugin 0. Numbers are given out in the order
 * of loading and may be given out again after a plugin was unloaded. */
typedef int VYRAPluginID;

#define VYRA_NO_PLUGIN ((VYRAPluginID)-1)  /* no plugin; as a message's target: every plugin */
#define VYRA_HOST_PLUGIN ((VYRAPluginID)0) /* the simulator itself */

/* A dataref: see VYRADataAccess.h. The handle of a name stays valid, and stays the same, for the life of
 * the library, whoever owns the name. */
typedef struct VYRAData_t* VYRADataRef;

/* A command and a scenery object: pointers that the host makes and owns. The library never looks inside. */
typedef void* VYRACommandRef; /* a command */
typedef void* VYRAObjectRef;  /* a scenery object */

/* Called by the host once for each object that a library look-up finds. `filePath` is terminated and
 * valid during the call only; `refcon` is the value that the caller of the look-up gave. */
typedef void (*VYRALibraryEnumerator_f)(const char* filePath, void* refcon);

#endif
