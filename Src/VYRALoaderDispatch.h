// The scopes in which every call into a plugin is made. Everything that calls plugins uses them, so whoever
// wants to know who runs, or to be told of each call, is served here.
#pragma once

#include <utility>

#include "VYRALoaderRegistry.h"
#include "VYRALoaderRunningCalls.h"
#include "VYRAWatchInternal.h"

VYRAPluginID VYRASetDispatchedPlugin(VYRAPluginID plugin);
VYRAPluginID VYRAGetDispatchedPlugin();

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
    if (!mayCall) [[unlikely]] {
      VYRAStoreRunningCall(VYRACallOf(plugin) | VYRACallInside(call.Outer(), VYRA_CALL_NONE));
    } else if (gWatch != 0) [[unlikely]] {
      told = VYRAWatchTellBegin(word);
    }
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

  // Says whether the owner of a record may be called, and if so makes it the dispatched plugin.
  bool operator()(VYRAPluginID plugin) {
    const VYRACallWord next = VYRACallOf(plugin) | depthAndKind;
    if (gUnwatched[plugin] != 0) [[likely]] {
      VYRAStoreRunningCall(next);
      return true;
    }
    if (gCallable[plugin] == 0) return false;
    VYRAStoreRunningCall(next);
    begun = next;
    told = VYRAWatchTellBegin(next);
    return true;
  }

  // The plugin's code has returned. Not needed when it threw, or when the walk ends with it.
  void Ended() {
    if (told != 0) [[unlikely]]
      VYRAWatchTellEnd(begun, std::exchange(told, 0));
    VYRANoteThatNobodyRuns();
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
