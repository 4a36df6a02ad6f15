/*
 * VYRADataAccess.h: datarefs, the named variables of the simulation, and data that plugins share.
 *
 * The library keeps no values: a dataref is a name and its owner's accessors, and a read or write calls
 * the owner's accessor with the owner as the calling plugin. Look a name up once and keep its handle;
 * every access through a handle is then a direct call.
 */
#ifndef VYRA_DATA_ACCESS_H
#define VYRA_DATA_ACCESS_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/* The types of a dataref's value: bits, so that a dataref can offer several. */
typedef int VYRADataTypeID;

#define VYRA_TYPE_INT 1         /* int, 32 bits */
#define VYRA_TYPE_FLOAT 2       /* float */
#define VYRA_TYPE_DOUBLE 4      /* double */
#define VYRA_TYPE_FLOAT_ARRAY 8 /* array of float */
#define VYRA_TYPE_INT_ARRAY 16  /* array of int */
#define VYRA_TYPE_DATA 32       /* bytes */

/* ---- Looking up ----------------------------------------------------------------------------------- */

/**
 * The dataref of this name (compared byte by byte, case-sensitive), or null when nobody publishes it now.
 * Null for a null name. The search costs a look-up: keep the handle.
 * [always]
 */
VYRA_API VYRADataRef VYRAFindDataRef(const char* name);

/**
 * 1 when the handle is one that the library gave out and somebody publishes it now, else 0. Any pointer may
 * be passed, here and to VYRAUnregisterDataAccessor; every other function trusts a handle that is not null.
 * [always]
 */
VYRA_API int VYRAIsDataRefGood(VYRADataRef dataRef);

/** Whether the owner declared the dataref writable, also after the owner left; 0 for null. [always] */
VYRA_API int VYRACanWriteDataRef(VYRADataRef dataRef);

/** The type bits that the owner declared, also after the owner left; 0 for null. [always] */
VYRA_API VYRADataTypeID VYRAGetDataRefTypes(VYRADataRef dataRef);

/* ---- Reading and writing ----------------------------------------------------------------------------
 *
 * Each function uses the owner's accessor of its own type and no other: there is no conversion, and the
 * declared types are not consulted. Where the handle is null, the owner gave no such accessor, the owner
 * left or is disabled, a read gives 0 and a write does nothing; a write also does nothing where the
 * dataref was not declared writable. A handle must have come from the library.
 *
 * Arrays and data: `offset` is the first element (byte, for data) to read or write, counting from 0;
 * `max` and `count` are numbers of elements (bytes). `values` holds at least that many. When reading,
 * a null `values` asks for the total number of elements, and otherwise the result is the number copied.
 * The library passes all of it to the owner unchanged and returns what the owner returns.
 */

/** Reads an int. [always] */
VYRA_API int VYRAGetDatai(VYRADataRef dataRef);
/** Writes an int. [always] */
VYRA_API void VYRASetDatai(VYRADataRef dataRef, int value);
/** Reads a float. [always] */
VYRA_API float VYRAGetDataf(VYRADataRef dataRef);
/** Writes a float. [always] */
VYRA_API void VYRASetDataf(VYRADataRef dataRef, float value);
/** Reads a double. [always] */
VYRA_API double VYRAGetDatad(VYRADataRef dataRef);
/** Writes a double. [always] */
VYRA_API void VYRASetDatad(VYRADataRef dataRef, double value);
/** Reads elements of an array of int. [always] */
VYRA_API int VYRAGetDatavi(VYRADataRef dataRef, int* values, int offset, int max);
/** Writes elements of an array of int. [always] */
VYRA_API void VYRASetDatavi(VYRADataRef dataRef, int* values, int offset, int count);
/** Reads elements of an array of float. [always] */
VYRA_API int VYRAGetDatavf(VYRADataRef dataRef, float* values, int offset, int max);
/** Writes elements of an array of float. [always] */
VYRA_API void VYRASetDatavf(VYRADataRef dataRef, float* values, int offset, int count);
/** Reads bytes. [always] */
VYRA_API int VYRAGetDatab(VYRADataRef dataRef, void* values, int offset, int max);
/** Writes bytes. [always] */
VYRA_API void VYRASetDatab(VYRADataRef dataRef, void* values, int offset, int count);

/* ---- Publishing -----------------------------------------------------------------------------------
 *
 * The accessors that an owner gives. Each is called with the owner as the calling plugin, only while the
 * owner is enabled, and may call any function of the interface. `refcon` is the read or the write refcon
 * of the registration. The array and data accessors get `values`, `offset`, `max` and `count` as the
 * reader or writer passed them, unchecked: see "Reading and writing".
 */

/** The value. */
typedef int (*VYRAReadInt_f)(void* refcon);
/** Takes the value. */
typedef void (*VYRAWriteInt_f)(void* refcon, int value);
/** The value. */
typedef float (*VYRAReadFloat_f)(void* refcon);
/** Takes the value. */
typedef void (*VYRAWriteFloat_f)(void* refcon, float value);
/** The value. */
typedef double (*VYRAReadDouble_f)(void* refcon);
/** Takes the value. */
typedef void (*VYRAWriteDouble_f)(void* refcon, double value);
/** Fills values, and returns how many elements it filled or, for null values, how many there are. */
typedef int (*VYRAReadIntArray_f)(void* refcon, int* values, int offset, int max);
/** Takes the elements. */
typedef void (*VYRAWriteIntArray_f)(void* refcon, int* values, int offset, int count);
/** As VYRAReadIntArray_f. */
typedef int (*VYRAReadFloatArray_f)(void* refcon, float* values, int offset, int max);
/** Takes the elements. */
typedef void (*VYRAWriteFloatArray_f)(void* refcon, float* values, int offset, int count);
/** As VYRAReadIntArray_f, in bytes. */
typedef int (*VYRAReadData_f)(void* refcon, void* values, int offset, int max);
/** Takes the bytes. */
typedef void (*VYRAWriteData_f)(void* refcon, void* values, int offset, int count);

/**
 * Publishes a dataref, owned by the calling plugin until it unregisters it or is unloaded. The host
 * publishes its own before it starts the library.
 *
 * name: any text, copied; null publishes nothing and gives null. types: the type bits to declare.
 * writable: 1 when others may write it. The accessors: each may be null; nothing checks that they agree
 * with `types` and `writable`. readRefcon, writeRefcon: passed to the read and to the write accessors;
 * what they point to belongs to the caller and must live as long as the registration.
 *
 * Result: the handle. A name that was published before keeps its handle, and readers that hold it read
 * the new owner's values.
 * Error: when somebody owns the name now, the caller included: "Dataref is already registered by someone
 * else."; the result is then that owner's handle, unchanged.
 * [always]
 */
VYRA_API VYRADataRef VYRARegisterDataAccessor(
    const char* name, VYRADataTypeID types, int writable, VYRAReadInt_f readInt, VYRAWriteInt_f writeInt,
    VYRAReadFloat_f readFloat, VYRAWriteFloat_f writeFloat, VYRAReadDouble_f readDouble,
    VYRAWriteDouble_f writeDouble, VYRAReadIntArray_f readIntArray, VYRAWriteIntArray_f writeIntArray,
    VYRAReadFloatArray_f readFloatArray, VYRAWriteFloatArray_f writeFloatArray, VYRAReadData_f readData,
    VYRAWriteData_f writeData, void* readRefcon, void* writeRefcon);

/**
 * Takes one of the calling plugin's datarefs back: nobody finds, reads or writes it until it is
 * registered again. Any pointer may be passed.
 *
 * Errors: "Dataref is illegal and cannot be unregistered." for a pointer that is no handle;
 * "Dataref is not owned by you - you cannot unregsiter." for a dataref of somebody else or of nobody.
 * [always]
 */
VYRA_API void VYRAUnregisterDataAccessor(VYRADataRef dataRef);

/* ---- Shared data: a value that plugins exchange without any of them owning it ------------------------ */

/**
 * Called after each write of a shared item, by anyone and whether or not the value changed, while its
 * plugin is enabled. A callback that shares or unshares the same item takes effect at once for a
 * departure and with the next write for an arrival.
 */
typedef void (*VYRADataChanged_f)(void* refcon);

/**
 * Joins a shared item, and creates it when there is none of this name: the library then stores the value
 * and publishes it as a writable dataref of this name, owned by the host. Items live as long as the
 * library.
 *
 * name: the dataref's name, copied; null gives 0. type: exactly one type bit. An array starts with one
 * element and data with one byte; both grow with writes past their end and never shrink; new space is
 * zero. A write for which there is no memory changes nothing and tells nobody. callback: called after each
 * write, or null to join without being told. refcon: passed to it.
 *
 * Result: 1, or 0 when the item exists with another type. Joining twice with the same callback and
 * refcon subscribes twice.
 * [always]
 */
VYRA_API int VYRAShareData(const char* name, VYRADataTypeID type, VYRADataChanged_f callback, void* refcon);

/**
 * Ends one subscription of the calling plugin: the first that was made with this name, type, callback and
 * refcon. The item, its value and its dataref remain. Result: 1, or 0 when there is no such subscription.
 * [always]
 */
VYRA_API int VYRAUnshareData(const char* name, VYRADataTypeID type, VYRADataChanged_f callback, void* refcon);

VYRA_END_DECLARATIONS

#endif
