// How the library speaks about a plugin: misuse to the plugin's own error callback, warnings to the host's
// log.
#pragma once

// The dispatched plugin's name, or a text in brackets that says why there is none.
const char* DebugCurrentPluginName();

// Reports a misuse to the dispatched plugin's error callback; without one nothing happens.
void VYRASendError(const char* message);

// Whether VYRASendError would reach a callback.
bool VYRAHasError();

// Writes a warning to the host's log, with the dispatched plugin's name in brackets.
void VYRALogPluginWarning(const char* message);
