// What is noted of a call into a plugin, and the watcher's side of it.
#pragma once

#include <cstdint>

#include "VYRAWatch.h"

// A call: the plugin, how many calls are on the stack with it, and its kind. In one word, which is saved,
// restored and read as a whole.
using VYRACallWord = std::uint64_t;

constexpr VYRAPluginID VYRACallPlugin(VYRACallWord call) { return static_cast<VYRAPluginID>(call >> 32U); }
constexpr int VYRACallDepth(VYRACallWord call) { return static_cast<int>(call >> 8U & 0xFFFFFFU); }
constexpr int VYRACallKind(VYRACallWord call) { return static_cast<int>(call & 0xFFU); }

// Kinds of their own: none of a plugin's code is called, but the library acts on the plugin's behalf.
enum { VYRA_CALL_NONE = 0 };

constexpr VYRACallWord VYRACallOf(VYRAPluginID plugin) {
  return VYRACallWord{static_cast<std::uint32_t>(plugin)} << 32U;
}

// The depth and kind of a call that is made inside another.
constexpr VYRACallWord VYRACallInside(VYRACallWord outer, int kind) {
  return (static_cast<std::uint32_t>(outer) & ~0xFFU) + 0x100U + static_cast<std::uint32_t>(kind);
}

// Which setting of the watcher is in force; 0: nobody watches.
[[gnu::visibility("hidden")]] extern unsigned gWatch;

// Tells the watcher of the begin of a call; the setting of the watcher that was told, or 0 when there was
// nothing to tell. The end is told to that setting alone.
unsigned VYRAWatchTellBegin(VYRACallWord call);
void VYRAWatchTellEnd(VYRACallWord call, unsigned told);
