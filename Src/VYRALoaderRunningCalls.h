// The calls on the stack: the one that runs, with the dispatched plugin, and those around it. Signal handlers
// and other threads read them, so each is one word, and they stand in tables that never move.
#pragma once

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "VYRAWatch.h"

// A call: the plugin, how many calls are on the stack with it, and its kind. In one word, which is saved,
// restored and read as a whole.
using VYRACallWord = std::uint64_t;

constexpr VYRAPluginID VYRACallPlugin(VYRACallWord call) { return static_cast<VYRAPluginID>(call >> 32U); }
constexpr int VYRACallDepth(VYRACallWord call) { return static_cast<int>(call >> 8U & 0xFFFFFFU); }
constexpr int VYRACallKind(VYRACallWord call) { return static_cast<int>(call & 0xFFU); }

// The kind of a scope in which the library acts on a plugin's behalf without calling its code.
enum { VYRA_CALL_NONE = 0 };

constexpr VYRACallWord VYRACallOf(VYRAPluginID plugin) {
  constexpr VYRACallWord kUpperHalf = VYRACallWord{1} << 32U;
  return static_cast<std::uint32_t>(plugin) * kUpperHalf;
}

// The depth and kind of a call that is made inside another.
constexpr VYRACallWord VYRACallInside(VYRACallWord outer, int kind) {
  return (static_cast<std::uint32_t>(outer) & ~0xFFU) + 0x100U + static_cast<std::uint32_t>(kind);
}

// The call that runs now. Its plugin is the dispatched one, also while no plugin's code runs.
union VYRACallState {
  VYRACallWord word;
  std::uint8_t kind;
  struct {
    std::uint32_t depthAndKind;
    VYRAPluginID plugin;
  } parts;
};

// Hidden, so that the code reaches it without a detour through the module's table of addresses.
[[gnu::visibility("hidden")]] extern VYRACallState gRunningCall;

// The plugin on whose behalf the library runs now; 0 while no plugin's code runs.
inline constinit VYRAPluginID& gDispatchedPlugin = gRunningCall.parts.plugin;

// The calls around the one that runs, each at its depth modulo the table's size.
[[gnu::visibility("hidden")]] extern std::atomic<VYRACallWord> gOuterCalls[VYRA_MOST_RUNNING_CALLS];

// The module that is being opened or closed by such a call, likewise.
struct VYRARunningModule {
  std::atomic<const char*> path;
  std::atomic<VYRAPluginID> plugin;  // the ID that it gets or had
};
[[gnu::visibility("hidden")]] extern VYRARunningModule gRunningModules[VYRA_MOST_RUNNING_CALLS];

// Whole words, in memory before the plugin's code is called: they are read by signal handlers and threads.
inline VYRACallWord VYRALoadRunningCall() { return __atomic_load_n(&gRunningCall.word, __ATOMIC_RELAXED); }
inline void VYRAStoreRunningCall(VYRACallWord call) {
  __atomic_store_n(&gRunningCall.word, call, __ATOMIC_RELAXED);
}

// Leaves the plugin dispatched. Its part alone is written, as the next to follow is a whole word again.
inline void VYRANoteThatNobodyRuns() {
  static_assert(std::endian::native == std::endian::little);
  __atomic_store_n(&gRunningCall.kind, std::uint8_t{VYRA_CALL_NONE}, __ATOMIC_RELAXED);
}

inline std::size_t VYRAPlaceOfCall(int depth) {
  return static_cast<unsigned>(depth) % unsigned{VYRA_MOST_RUNNING_CALLS};
}

// How many calls into plugins and the host are on the stack.
inline int VYRADispatchDepth() { return VYRACallDepth(VYRALoadRunningCall()); }
