/*
 * VYRAUtilities.h: what plugins need of the simulator beside its data: its commands, and below them the
 * smaller services, a group each.
 */
#ifndef VYRA_UTILITIES_H
#define VYRA_UTILITIES_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/* ---- Commands ---------------------------------------------------------------------------------------
 *
 * A command is a named action of the simulator or of a plugin: "sim/gear/toggle". The host makes and owns
 * them; a handle stays valid as long as the host says, and the library passes on whatever it is given,
 * null too. A command that is pressed goes through phases: one begin, a continue in each frame while it
 * is held, one end. For each phase the host asks the handlers before it acts, acts, and asks the
 * handlers after it.
 */

/* The phase of a command, as a handler is told. */
#define VYRA_COMMAND_PHASE_BEGIN 0    /* the command was just pressed */
#define VYRA_COMMAND_PHASE_CONTINUE 1 /* it is still held */
#define VYRA_COMMAND_PHASE_END 2      /* it was released; also when it is pressed and released at once */

/**
 * A command handler, called with each phase of its command while its plugin is enabled, with that plugin
 * as the calling plugin.
 *
 * phase: one of VYRA_COMMAND_PHASE_*. refcon: as registered; what it points to belongs to the plugin.
 *
 * Result: 0 to stop: the handlers that would come later in this pass are not called, and in the pass
 * before the host acts, the host is told not to act. Anything else goes on.
 *
 * A handler may register and unregister handlers of this command, its own included, and press commands,
 * this one included. One that is unregistered is not called any more; one that is registered is called
 * from the next pass on, which is also one that begins inside this pass.
 */
typedef int (*VYRACommandHandler_f)(VYRACommandRef command, int phase, void* refcon);

/** The command of this name, or null when the host has none. Null for a null name. [started] */
VYRA_API VYRACommandRef VYRAFindCommand(const char* name);

/**
 * The command of this name, which the host makes when it has none.
 *
 * name: the prefix "sim/" belongs to the simulator; null makes nothing and gives null. description: a
 * text for the user, which the host uses when it makes the command; handed to the host as it is, null too.
 *
 * Error: for a name that begins with "sim/", "Plugin is illegally registering a command with the prefix
 * sim/", and in the host's log the warning "It is illegal to register a command starting with sim/". The
 * command is found or made nevertheless.
 * [started]
 */
VYRA_API VYRACommandRef VYRACreateCommand(const char* name, const char* description);

/**
 * Presses a command and holds it: the calling plugin counts as holding it, once however often it presses
 * it, and the host is told to continue it in each frame while the plugin is enabled. Ends with
 * VYRACommandEnd, or when the plugin is unloaded. A command that is pressed while the host is told of held
 * ones is first continued in the next frame.
 * [started]
 */
VYRA_API void VYRACommandBegin(VYRACommandRef command);

/** Releases a command. The host is told also when the calling plugin does not hold it. [started] */
VYRA_API void VYRACommandEnd(VYRACommandRef command);

/** Presses and releases a command. Whether the calling plugin holds it does not change. [started] */
VYRA_API void VYRACommandOnce(VYRACommandRef command);

/**
 * Adds a handler of the calling plugin to a command. It stays until it is unregistered or its plugin is
 * unloaded.
 *
 * handler: null adds nothing. before: not 0, called before the host acts, and before all such handlers
 * that are there already; 0, called after the host has acted, and after all such handlers. refcon: passed
 * to the handler. The same handler may be added more than once, and is then called as often.
 * [always]
 */
VYRA_API void VYRARegisterCommandHandler(VYRACommandRef command, VYRACommandHandler_f handler, int before,
                                         void* refcon);

/**
 * Removes one handler of the calling plugin: of those with this command, handler, before and refcon the
 * one that would be called first. None: nothing happens.
 * [always]
 */
VYRA_API void VYRAUnregisterCommandHandler(VYRACommandRef command, VYRACommandHandler_f handler, int before,
                                           void* refcon);

/* ---- Paths and files --------------------------------------------------------------------------------
 *
 * Paths from and to a plugin without the feature "VYRA_USE_NATIVE_PATHS" are in the host's older encoding,
 * which on this platform is UTF-8 as well.
 */

/* Size in bytes, terminator included, of the buffers for a path of the host. */
enum { VYRA_PATH_SIZE = 512 };

/**
 * The host's root folder, ending in "/". outSystemPath: a buffer of 512 bytes; null does nothing.
 * [started]
 */
VYRA_API void VYRAGetSystemPath(char* outSystemPath);

/** The host's preferences file. outPrefsPath: a buffer of 512 bytes; null does nothing. [started] */
VYRA_API void VYRAGetPrefsPath(char* outPrefsPath);

/** What parts the folders of a path: "/". Never null; the text belongs to the library. [always] */
VYRA_API const char* VYRAGetDirectorySeparator(void);

/**
 * Splits a path in place at its last "/": the buffer then holds the folder, without the "/" at its end, and
 * the result points to the name, in the same buffer. One "/" at the path's end is dropped first.
 *
 * ioFullPath: a terminated path. "/a/b/" becomes "/a" and "b"; "/a" becomes "" and "a".
 * Result: the name. Without a "/" before it, that is the whole buffer: the start of "a", of "", and of "/",
 * which becomes "". Null for null.
 * [always]
 */
VYRA_API char* VYRAExtractFileAndPath(char* ioFullPath);

/**
 * Lists what is in a folder, without "." and "..", in the order in which the system lists it.
 *
 * directoryPath: the folder; one that cannot be read, and null, count as empty. firstReturn: the first name
 * to return, from 0; a negative one counts as 0. To page, call again with firstReturn advanced by
 * *outReturnedFiles.
 * outFileNames: a buffer of fileNameBufferSize bytes, or null for none. It receives the names one after
 * the other, each terminated, and after the last an empty one.
 * outIndices: null, or an array of indexCount pointers. It receives the address of each name in outFileNames,
 * and after the last a null.
 * outTotalFiles: null, or receives the number of names in the folder. outReturnedFiles: null, or receives the
 * number of names returned.
 *
 * Result: 1 when all names from firstReturn on and the ends of both lists found room; else 0, and what
 * found room was written, without either end. A size below 0 counts as 0.
 * [always]
 */
VYRA_API int VYRAGetDirectoryContents(const char* directoryPath, int firstReturn, char* outFileNames,
                                      int fileNameBufferSize, char** outIndices, int indexCount,
                                      int* outTotalFiles, int* outReturnedFiles);

/* The host's two kinds of data file; what they hold is the host's to say. */
#define VYRA_DATA_FILE_1 1 /* the first kind */
#define VYRA_DATA_FILE_2 2 /* the second kind */

/**
 * Has the host load a data file.
 *
 * fileType: VYRA_DATA_FILE_1 or _2. filePath: handed to the host as it is, null too.
 * Result: the host's; 0 after an error.
 * Error: for any other type, "Illegal file type passed to VYRALoadDataFile."
 * [started]
 */
VYRA_API int VYRALoadDataFile(int fileType, const char* filePath);

/**
 * Has the host save a data file. Arguments and result as for VYRALoadDataFile, but for the null path.
 *
 * Errors: "Null file path passed to VYRASaveDataFile."; then, for any other type, "Illegal file type passed
 * to VYRASaveDataFile."
 * [started]
 */
VYRA_API int VYRASaveDataFile(int fileType, const char* filePath);

/* ---- Keys, buttons, versions and other utilities --------------------------------------------------------
 *
 * Where nothing else is said, arguments go to the host as they are, and their meaning is the host's.
 */

/** Presses a key in the user's stead. [started] */
VYRA_API void VYRASimulateKeyPress(int keyType, int key);

/** Has the host speak a text. [started] */
VYRA_API void VYRASpeakString(const char* text);

/** Does what a key of the host's own list does. [started] */
VYRA_API void VYRACommandKeyStroke(int key);

/**
 * Presses a button of the host's own list and holds it: the host is told of it in each frame until it is
 * released, once for each time that it was pressed. Nothing but VYRACommandButtonRelease ends that, not even
 * the plugin's own end. Button 0 is none, as a 0 ends the list that the host reads: it is not held.
 * [started]
 */
VYRA_API void VYRACommandButtonPress(int button);

/**
 * Releases a button: takes back one press of it, by whichever plugin. The host is told in any case.
 * [started]
 */
VYRA_API void VYRACommandButtonRelease(int button);

/** Has the host load its scenery anew. [started] */
VYRA_API void VYRAReloadScenery(void);

/**
 * The name of a virtual key, as in "Page Up", "7", "A" or "Numpad-7"; "Unknown" for a code that has none.
 * Never null; the text belongs to the library.
 * [always]
 */
VYRA_API const char* VYRAGetVirtualKeyDescription(char virtualKey);

/**
 * The versions of what runs. Each pointer may be null.
 *
 * outHostVersion, outHostId: the host's, in the host's own counting. outLibraryVersion: 210 for 2.1.
 * [started]
 */
VYRA_API void VYRAGetVersions(int* outHostVersion, int* outLibraryVersion, int* outHostId);

/** The host's code of the language that it speaks. [started] */
VYRA_API int VYRAGetLanguage(void);

/**
 * A function that the host exports by name, beside this interface; null when it has none of this name. Its
 * type is the host's to say.
 * [started]
 */
VYRA_API void* VYRAFindSymbol(const char* name);

VYRA_END_DECLARATIONS

#endif
