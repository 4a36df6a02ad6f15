// Calls into plugins: the dispatched plugin, the calls on the stack, and the scopes in which every call into
// a plugin is made. Everything that calls plugins uses these scopes, so whoever wants to know who runs, or to
// be told of each call, is served here.
#pragma once

#include <atomic>
#include <cstdint>

#include "VYRALoaderRegistry.h"
#include "VYRAWatchInternal.h"

// The plugin on whose behalf the library runs now; 0 while no plugin's code runs. Hidden, as those below, so
// that the code reaches it without a detour through the module's table of addresses.
[[gnu::visibility("hidden")]] extern VYRAPluginID gDispatchedPlugin;

// How many calls into plugins and the host are on the stack.
[[gnu::visibility("hidden")]] extern std::atomic<int> gDispatchDepth;

VYRAPluginID VYRASetDispatchedPlugin(VYRAPluginID plugin);
VYRAPluginID VYRAGetDispatchedPlugin();

// The innermost calls, each at its depth modulo the table's size. A call into a module itself, which opens or
// closes it, has the module's path beside it.
[[gnu::visibility("hidden")]] extern std::atomic<VYRACallWord> gRunningCalls[VYRA_MOST_RUNNING_CALLS];
[[gnu::visibility("hidden")]] extern std::atomic<const char*> gRunningModules[VYRA_MOST_RUNNING_CALLS];

inline std::atomic<VYRACallWord>& VYRARunningCallAt(int depth) {
  return gRunningCalls[static_cast<unsigned>(depth) % VYRA_MOST_RUNNING_CALLS];
}

inline std::atomic<const char*>& VYRARunningModuleAt(int depth) {
  return gRunningModules[static_cast<unsigned>(depth) % VYRA_MOST_RUNNING_CALLS];
}

// Notes a call of a plugin's code on the stack while the scope lasts. By itself it serves calls that the
// watcher is not told of.
class StRunningCall {
 public:
  StRunningCall(VYRAPluginID plugin, int kind)
      : savedPlugin(gDispatchedPlugin), savedDepth(gDispatchDepth.load(std::memory_order_relaxed)) {
    const int depth = savedDepth + 1;
    VYRARunningCallAt(depth).store(VYRACallWordOf(plugin, depth, kind), std::memory_order_relaxed);
    gDispatchDepth.store(depth, std::memory_order_relaxed);
    gDispatchedPlugin = plugin;
  }
  ~StRunningCall() {
    gDispatchDepth.store(savedDepth, std::memory_order_relaxed);
    gDispatchedPlugin = savedPlugin;
  }
  StRunningCall(const StRunningCall&) = delete;
  StRunningCall& operator=(const StRunningCall&) = delete;

  int Depth() const { return savedDepth + 1; }

 private:
  VYRAPluginID savedPlugin;
  int savedDepth;
};

// A call into a plugin: makes it the dispatched plugin while the scope lasts, and says whether it may be
// called. Before anything is loaded the host, and nobody else, may be.
//
//   const StDispatchCallback dispatch(window.plugin, VYRA_CALL_WINDOW_DRAW);
//   if (dispatch()) window.draw(&window, window.refcon);
class StDispatchCallback {
 public:
  // The calls of a plugin's life are made whether or not it is enabled.
  enum class Ask { whetherEnabled, nothing };

  StDispatchCallback(VYRAPluginID plugin, int kind, Ask ask = Ask::whetherEnabled)
      : mayCall(ask == Ask::nothing || VYRARegistryIsEnabled(plugin) ||
                (plugin == VYRA_HOST_PLUGIN && gAllPlugins.empty())),
        call(plugin, kind),
        word(VYRACallWordOf(plugin, call.Depth(), kind)) {
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
      : savedPlugin(gDispatchedPlugin),
        savedDepth(gDispatchDepth.load(std::memory_order_relaxed)),
        word(VYRACallWordOf(0, savedDepth + 1, kind)) {
    VYRARunningCallAt(savedDepth + 1).store(0, std::memory_order_relaxed);
    gDispatchDepth.store(savedDepth + 1, std::memory_order_relaxed);
  }
  ~StDispatchWalk() {
    Ended();
    gDispatchDepth.store(savedDepth, std::memory_order_relaxed);
    gDispatchedPlugin = savedPlugin;
  }
  StDispatchWalk(const StDispatchWalk&) = delete;
  StDispatchWalk& operator=(const StDispatchWalk&) = delete;

  // Makes the owner of a record the dispatched plugin, in place of the last, and says whether it may be
  // called.
  bool operator()(VYRAPluginID plugin) {
    gDispatchedPlugin = plugin;
    if (gCallable[plugin] == 0) return false;
    const VYRACallWord call = word | VYRACallWord{static_cast<std::uint32_t>(plugin)} << 32U;
    VYRARunningCallAt(savedDepth + 1).store(call, std::memory_order_relaxed);
    if (gWatch != 0) [[unlikely]]
      Begin(call);
    return true;
  }

  // The plugin's code has returned. Not needed when it threw, or when the walk ends with it.
  void Ended() {
    if (told != 0) [[unlikely]]
      End();
  }

 private:
  [[gnu::cold]] void Begin(VYRACallWord call) {
    begun = call;
    told = VYRAWatchTellBegin(call);
  }
  [[gnu::cold]] void End() {
    const unsigned whom = told;
    told = 0;
    VYRAWatchTellEnd(begun, whom);
  }

  VYRAPluginID savedPlugin;
  int savedDepth;
  VYRACallWord word;
  VYRACallWord begun = 0;
  unsigned told = 0;
};

// The opening or closing of a module, in which its own constructors or destructors run. `plugin` is the ID
// that it gets or had; the dispatched plugin stays who it is.
class StModuleCall {
 public:
  StModuleCall(VYRAPluginID plugin, int kind, const char* path);
  ~StModuleCall();
  StModuleCall(const StModuleCall&) = delete;
  StModuleCall& operator=(const StModuleCall&) = delete;

 private:
  int savedDepth;
  VYRACallWord word;
  const char* modulePath;
  unsigned told;
};

// Acts on a plugin's behalf while the scope lasts, without calling it.
class StActAs {
 public:
  explicit StActAs(VYRAPluginID plugin) : savedPlugin(gDispatchedPlugin) { gDispatchedPlugin = plugin; }
  ~StActAs() { gDispatchedPlugin = savedPlugin; }
  StActAs(const StActAs&) = delete;
  StActAs& operator=(const StActAs&) = delete;

 private:
  VYRAPluginID savedPlugin;
};
