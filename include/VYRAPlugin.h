/*
 * VYRAPlugin.h: what a plugin module exports, and what a plugin may ask about itself and the others:
 * the registry, messages, features, enabling and disabling, errors and the log.
 *
 * A plugin is a shared library with the ending ".vyp", linked against libVYRA.so.2. The smallest one
 * exports VyPluginStart. Its states:
 *
 *   loaded   -- after VyPluginStart returned 1: it may be asked to enable
 *   enabled  -- after VyPluginEnable returned 1: its callbacks and messages are called
 *   loaded   -- after VyPluginDisable: its registrations stay, but none is called
 *   gone     -- after VyPluginStop: everything that it registered is removed, its module is closed
 *
 * While the library runs a plugin's code, that plugin is the *calling plugin* of every function below.
 * When no plugin's code runs, the calling plugin is the host (plugin 0).
 */
#ifndef VYRA_PLUGIN_H
#define VYRA_PLUGIN_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/* ---- What a module exports ------------------------------------------------------------------------ */

/* Sizes in bytes, terminator included, of the text buffers in this family. */
enum { VYRA_PLUGIN_INFO_SIZE = 256 };

/**
 * Required. Called once, right after the module was loaded, with the plugin as the calling plugin. It
 * may register datarefs, flight loops and so on; none is called before the plugin is enabled.
 *
 * outName, outSignature, outDescription: buffers of 256 bytes each, not cleared; the plugin must write a
 * terminated text into all three. No more than 256 bytes of each are read. The signature must be unique
 * among the loaded plugins (reverse domain style, "org.example.fuel"), and not empty: a plugin whose
 * signature another loaded plugin has, or whose signature is empty, is stopped and unloaded again.
 *
 * Result: 1 to stay loaded, 0 to refuse. After a refusal everything that the plugin registered is removed
 * and its module is closed; VyPluginStop is not called.
 */
VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription);

/**
 * Optional. Called once before the module is closed. After it has returned, everything that the plugin
 * still has registered is removed.
 */
VYRA_PLUGIN_EXPORT void VyPluginStop(void);

/**
 * Optional. Called each time the plugin is asked to become enabled. Result: 1 to become enabled, 0 to
 * stay disabled; a later request asks again. A plugin without this function is enabled on the first
 * request.
 */
VYRA_PLUGIN_EXPORT int VyPluginEnable(void);

/**
 * Optional. Called when the plugin has just been disabled; none of its callbacks is called any more.
 */
VYRA_PLUGIN_EXPORT void VyPluginDisable(void);

/**
 * Optional. Called with each message for an enabled plugin.
 *
 * fromPlugin: the sender; 0 for the host. message: the number; 101 to 108 come from the host (below).
 * param: whatever the sender passed; who owns what it points to is a matter between the two.
 */
VYRA_PLUGIN_EXPORT void VyPluginReceiveMessage(VYRAPluginID fromPlugin, int message, void* param);

/* The host's messages, sent to every enabled plugin. Two have a meaning that the library gives them;
 * their parameter is the plane's index, cast to a pointer, and 0 is the user's own plane. The others are
 * the host's notifications, and its documentation says what they mean. */
#define VYRA_MESSAGE_HOST_101 101       /* the host's */
#define VYRA_MESSAGE_PLANE_LOADED 102   /* a plane was loaded */
#define VYRA_MESSAGE_HOST_103 103       /* the host's */
#define VYRA_MESSAGE_HOST_104 104       /* the host's */
#define VYRA_MESSAGE_HOST_105 105       /* the host's */
#define VYRA_MESSAGE_PLANE_UNLOADED 106 /* a plane was unloaded */
#define VYRA_MESSAGE_HOST_107 107       /* the host's */
#define VYRA_MESSAGE_HOST_108 108       /* the host's */

/* ---- The registry --------------------------------------------------------------------------------- */

/** The calling plugin's ID. [always] */
VYRA_API VYRAPluginID VYRAGetMyID(void);

/** The number of records in the registry, the host's included. [always] */
VYRA_API int VYRACountPlugins(void);

/**
 * The ID of plugin number `index`. IDs are indices: `index` comes back unchanged, without a range check.
 * [always]
 */
VYRA_API VYRAPluginID VYRAGetNthPlugin(int index);

/**
 * The first plugin whose module was loaded from exactly this path (compared byte by byte), or -1.
 *
 * path: a terminated path; null and "" find nothing. For a caller without the feature "VYRA_USE_NATIVE_PATHS"
 * the path is taken to be in the host's older encoding, which on this platform is UTF-8 as well. The
 * host's own record answers to "brelund.skyvora.skyvora".
 * [always]
 */
VYRA_API VYRAPluginID VYRAFindPluginByPath(const char* path);

/**
 * The first plugin with exactly this signature (compared byte by byte), or -1. The host has an empty
 * signature, so "" finds plugin 0. Null finds nothing.
 * [always]
 */
VYRA_API VYRAPluginID VYRAFindPluginBySignature(const char* signature);

/**
 * Copies what is known of a plugin into the caller's buffers.
 *
 * plugin: an ID; the buffers are left untouched when there is no such plugin.
 * outName, outFilePath, outSignature, outDescription: each null, or a buffer of 256 bytes that receives
 * the text, cut to 255 bytes and terminated.
 * [always]
 */
VYRA_API void VYRAGetPluginInfo(VYRAPluginID plugin, char* outName, char* outFilePath, char* outSignature,
                                char* outDescription);

/**
 * 1 when the plugin is enabled, 0 when it is not or there is no such plugin. The host is enabled.
 * [always]
 */
VYRA_API int VYRAIsPluginEnabled(VYRAPluginID plugin);

/* ---- Enabling, disabling, reloading --------------------------------------------------------------- */

/**
 * Enables a plugin and hands it what waited for it. An enabled plugin is not asked again, but still gets
 * what waits.
 *
 * plugin: any ID but the host's: 0 and unknown IDs do nothing.
 * Result: 1 when the plugin is enabled afterwards. 0 in every other case: the plugin is the host or unknown;
 * it refused; it disabled itself in what it was handed; its module is still being opened; its enable call is
 * still running; it is on its way out (turned down after its start, being stopped, or stopped); its module is
 * closed. Nothing is logged.
 * [always]
 */
VYRA_API int VYRAEnablePlugin(VYRAPluginID plugin);

/**
 * Disables a plugin: keyboard focus, the mouse, the camera and the AI planes are taken from it, and it is
 * told, while it still counts as enabled; then it is disabled and its VyPluginDisable called. What it took
 * back in these calls is taken again, and it is not told. 0, unknown IDs and plugins that are not enabled:
 * nothing happens.
 * [always]
 */
VYRA_API void VYRADisablePlugin(VYRAPluginID plugin);

/**
 * Asks for all plugins to be stopped, unloaded and loaded afresh. Only a wish is noted: it is carried out
 * at the end of the next flight-loop pass, so a plugin may call this from any of its callbacks.
 * [always]
 */
VYRA_API void VYRAReloadPlugins(void);

/* ---- Messages ------------------------------------------------------------------------------------- */

/**
 * Sends a message from the calling plugin, and returns when every receiver has returned.
 *
 * plugin: the receiver, or -1 for every plugin in ascending order: the host first, the sender too.
 * Receivers that are disabled, have no receive function or do not exist are passed over in silence.
 * message: any number; the library uses 101 to 108. param: passed on unchanged.
 * [always]
 */
VYRA_API void VYRASendMessageToPlugin(VYRAPluginID plugin, int message, void* param);

/* ---- Features: newer behaviour that a plugin asks for ----------------------------------------------- */

/** Draw callbacks of a plugin with this feature are also called while the host draws reflections. */
#define VYRA_FEATURE_WANTS_REFLECTIONS "VYRA_WANTS_REFLECTIONS"

/** Paths to and from a plugin with this feature are UTF-8 in the host's native form. */
#define VYRA_FEATURE_NATIVE_PATHS "VYRA_USE_NATIVE_PATHS"

/** Called once for each feature. `feature` belongs to the library and lives as long as it does. */
typedef void (*VYRAFeatureEnumerator_f)(const char* feature, void* refcon);

/** 1 when the library knows a feature of this name (exact, case-sensitive), else 0; 0 for null. [always] */
VYRA_API int VYRAHasFeature(const char* feature);

/**
 * The calling plugin's flag for a feature, as it was last stored with VYRAEnableFeature; 0 at first.
 * Error: for an unknown name, "Illegal feature name passed to VYRAEnableFeature" (that function's name in
 * both cases); the result is then 0.
 * [always]
 */
VYRA_API int VYRAIsFeatureEnabled(const char* feature);

/**
 * Stores the calling plugin's flag for a feature. `enable` is stored unchanged; everything but 0 counts
 * as enabled. Error: for an unknown name, "Illegal feature name passed to VYRAEnableFeature".
 * [always]
 */
VYRA_API void VYRAEnableFeature(const char* feature, int enable);

/**
 * Calls `enumerator` once for each feature, in the library's order. A null enumerator does nothing.
 * [always]
 */
VYRA_API void VYRAEnumerateFeatures(VYRAFeatureEnumerator_f enumerator, void* refcon);

/* ---- Errors and the log --------------------------------------------------------------------------- */

/** Receives a sentence about a misuse by the plugin. `message` is valid during the call only. */
typedef void (*VYRAError_f)(const char* message);

/**
 * Sets the calling plugin's error callback; null removes it. A plugin without one never hears of its
 * misuse. Some functions check their arguments only for plugins that have one: set it while developing.
 * Misuse inside an error callback is reported too, but no more than four error callbacks run inside each
 * other: in the innermost it is as if the plugin had none.
 * [always]
 */
VYRA_API void VYRASetErrorCallback(VYRAError_f callback);

/**
 * Appends a text to the host's log as it stands, without a newline of its own. Null, and a call before
 * the library was started, write nothing.
 * [always]
 */
VYRA_API void VYRADebugString(const char* text);

/**
 * The calling plugin's name, for diagnostics: "[VYRA_PLUGIN_SKYVORA]" for the host. Never null; the text
 * belongs to the library and is valid until a plugin is loaded or unloaded.
 * [always]
 */
VYRA_API const char* VYRADebugGetCurrentPluginName(void);

/** 1 once the host has started the library, else 0. May be called at any time. [always] */
VYRA_API int VYRAInitialized(void);

VYRA_END_DECLARATIONS

#endif
