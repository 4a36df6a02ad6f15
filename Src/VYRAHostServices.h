// The host service table that the host handed over at start-up, and the log behind its DebugString.
#pragma once

#include <string>

#include "VYRAHost.h"
#include "VYRAPlugin.h"

// Null until VYRAInitializePlugins stores it.
extern VYRAHostServices* gHooks;

// The host's third argument to VYRAInitializePlugins. Kept for a debugger to find; never read.
extern void* gSelf;

// Formats a line for the host's log into one static buffer of 8192 bytes; a longer text is cut. Drops the
// text while there is no service table. Returns 0.
[[gnu::format(printf, 1, 2)]] int VYRA_dprintf(const char* format, ...);

// Writes the pieces of a log line one after the other, however long each is. Each is a call of the host,
// which may lead to an event, so a text that stands in a record is copied before it is given here.
inline void VYRALogPiece(const char* piece) { VYRADebugString(piece); }
inline void VYRALogPiece(const std::string& piece) { VYRADebugString(piece.c_str()); }

template <class... Pieces>
void VYRALog(const Pieces&... pieces) {
  (VYRALogPiece(pieces), ...);
}
