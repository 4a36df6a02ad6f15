// What runs when the library calls a plugin: the driver's side of every callback.
#pragma once

#include "Book.h"

namespace calls {

// What the modules pass on to, and what the host registers for itself.
extern const Driver kDriver;

// Does a few steps as a plugin, the library's caller. An exception of any of them may leave it.
void Acts(Plugin& self, int most);

// What the host told the library with the event is what the callback is told.
void RequireTold(int first, int second, int third);

// Throws an exception of the plugin's own type.
[[noreturn]] void Throw(const Plugin& plugin);

}  // namespace calls
