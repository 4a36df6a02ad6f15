// The watcher's side of calls into plugins: what is noted of a call, and telling the watcher of it.
#pragma once

#include <cstdint>

#include "VYRAWatch.h"

// A call on the stack, in one word, so that a signal handler or another thread reads a whole one: the plugin,
// the depth and the kind. The depth tells whether a place in the table below holds the call that is meant.
using VYRACallWord = std::uint64_t;

constexpr VYRACallWord VYRACallWordOf(VYRAPluginID plugin, int depth, int kind) {
  return VYRACallWord{static_cast<std::uint32_t>(plugin)} << 32U |
         VYRACallWord{static_cast<std::uint32_t>(depth) & 0xFFFFFFU} << 8U | static_cast<std::uint8_t>(kind);
}

constexpr VYRAPluginID VYRACallPlugin(VYRACallWord call) { return static_cast<VYRAPluginID>(call >> 32U); }
constexpr int VYRACallDepth(VYRACallWord call) { return static_cast<int>(call >> 8U & 0xFFFFFFU); }
constexpr int VYRACallKind(VYRACallWord call) { return static_cast<int>(call & 0xFFU); }

// Which setting of the watcher is in force; 0: nobody watches.
[[gnu::visibility("hidden")]] extern unsigned gWatch;

// Tells the watcher of the begin of the call that is noted at a depth; the setting of the watcher that was
// told, or 0 when there was nothing to tell. The end is told to that setting alone.
unsigned VYRAWatchTellBegin(VYRACallWord call);
void VYRAWatchTellEnd(VYRACallWord call, unsigned told);
