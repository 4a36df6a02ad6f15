// Calls into plugins: the dispatched plugin, the calls on the stack, and the scopes in which every call into
// a plugin is made. Everything that calls plugins uses these scopes, so whoever wants to know who runs, or to
// be told of each call, is served here.
#pragma once

#include <atomic>
#include <cstdint>

#include "VYRALoaderRegistry.h"
#include "VYRAWatchInternal.h"

// The call that runs now. Its plugin is the dispatched one, also while no plugin's code runs.
union VYRACallState {
  VYRACallWord word;
  struct {
    std::uint32_t depthAndKind;
    VYRAPluginID plugin;
  } parts;
};

// Hidden, so that the code reaches it without a detour through the module's table of addresses.
[[gnu::visibility("hidden")]] extern VYRACallState gRunningCall;

// The plugin on whose behalf the library runs now; 0 while no plugin's code runs.
inline constinit VYRAPluginID& gDispatchedPlugin = gRunningCall.parts.plugin;

VYRAPluginID VYRASetDispatchedPlugin(VYRAPluginID plugin);
VYRAPluginID VYRAGetDispatchedPlugin();

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

inline std::size_t VYRAPlaceOfCall(int depth) {
  return static_cast<unsigned>(depth) % unsigned{VYRA_MOST_RUNNING_CALLS};
}

// How many calls into plugins and the host are on the stack.
inline int VYRADispatchDepth() { return VYRACallDepth(VYRALoadRunningCall()); }

// Puts a call on the stack while the scope lasts. By itself it serves calls that the watcher is not told of.
class StRunningCall {
 public:
  StRunningCall(VYRAPluginID plugin, int kind) : outer(VYRALoadRunningCall()) {
    gOuterCalls[VYRAPlaceOfCall(VYRACallDepth(outer))].store(outer, std::memory_order_relaxed);
    VYRAStoreRunningCall(VYRACallOf(plugin) | VYRACallInside(outer, kind));
  }
  ~StRunningCall() { VYRAStoreRunningCall(outer); }
  StRunningCall(const StRunningCall&) = delete;
  StRunningCall& operator=(const StRunningCall&) = delete;

  VYRACallWord Outer() const { return outer; }

 private:
  VYRACallWord outer;
};

// A call into a plugin: makes it the dispatched plugin while the scope lasts, and says whether it may be
// called. Before anything is loaded the host, and nobody else, may be.
//
//   const StDispatchCallback dispatch(window.owner, VYRA_CALL_WINDOW_DRAW);
//   if (dispatch()) window.draw(&window, window.refcon);
class StDispatchCallback {
 public:
  // The calls of a plugin's life are made whether or not it is enabled.
  enum class Ask { whetherEnabled, nothing };

  StDispatchCallback(VYRAPluginID plugin, int kind, Ask ask = Ask::whetherEnabled)
      : mayCall(ask == Ask::nothing || VYRARegistryIsEnabled(plugin) ||
                (plugin == VYRA_HOST_PLUGIN && gAllPlugins.empty())),
        call(plugin, kind),
        word(VYRACallOf(plugin) | VYRACallInside(call.Outer(), kind)) {
    if (gWatch != 0 && mayCall) [[unlikely]]
      told = VYRAWatchTellBegin(word);
  }
  ~StDispatchCallback() {
    if (told != 0) [[unlikely]]
      VYRAWatchTellEnd(word, told);
  }
  StDispatchCallback(const StDispatchCallback&) = delete;
  StDispatchCallback& operator=(const StDispatchCallback&) = delete;

  bool operator()() const { return mayCall; }

 private:
  bool mayCall;
  StRunningCall call;
  VYRACallWord word;
  unsigned told = 0;
};

// The calls of one walk into many plugins: what stands for them all is saved and restored once.
//
//   StDispatchWalk dispatch(VYRA_CALL_FLIGHT_LOOP);
//   while (Record* record = walk.Next()) {
//     if (!dispatch(record->owner)) continue;
//     record->callback(record->refcon);
//     dispatch.Ended();
//   }
class StDispatchWalk {
 public:
  explicit StDispatchWalk(int kind)
      : call(gDispatchedPlugin, VYRA_CALL_NONE), depthAndKind(VYRACallInside(call.Outer(), kind)) {}
  ~StDispatchWalk() { Ended(); }
  StDispatchWalk(const StDispatchWalk&) = delete;
  StDispatchWalk& operator=(const StDispatchWalk&) = delete;

  // Makes the owner of a record the dispatched plugin, in place of the last, and says whether it may be
  // called.
  bool operator()(VYRAPluginID plugin) {
    VYRAStoreRunningCall(VYRACallOf(plugin) | depthAndKind);
    if (gUnwatched[plugin] != 0) [[likely]]
      return true;
    if (gCallable[plugin] == 0) return false;
    begun = VYRACallOf(plugin) | depthAndKind;
    told = VYRAWatchTellBegin(begun);
    return true;
  }

  // The plugin's code has returned. Not needed when it threw, or when the walk ends with it.
  void Ended() {
    if (told == 0) [[likely]]
      return;
    VYRAWatchTellEnd(begun, told);
    told = 0;
  }

 private:
  StRunningCall call;
  VYRACallWord depthAndKind;
  VYRACallWord begun = 0;
  unsigned told = 0;
};

// The opening or closing of a module, in which its own constructors or destructors run. The dispatched plugin
// stays who it is; `plugin` is the ID that the module's plugin gets or had.
class StModuleCall {
 public:
  StModuleCall(VYRAPluginID modulePlugin, int kind, const char* path);
  ~StModuleCall();
  StModuleCall(const StModuleCall&) = delete;
  StModuleCall& operator=(const StModuleCall&) = delete;

 private:
  void NoteModule() const;

  const char* modulePath;
  VYRAPluginID plugin;
  StRunningCall call;
  VYRACallWord word;
  unsigned told = 0;
};

// Acts on a plugin's behalf while the scope lasts, without calling it.
class StActAs {
 public:
  explicit StActAs(VYRAPluginID plugin) : call(plugin, VYRA_CALL_NONE) {}

 private:
  StRunningCall call;
};
