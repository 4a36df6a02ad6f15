// What the driver knows by itself: who is loaded and in which state, who registered what, and which calls
// into the library are on their way. What the library does is held against it.
#pragma once

#include <array>
#include <deque>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Module.h"

namespace calls {

// Ends the process with a line that begins with "FAULT:".
[[noreturn]] void Fail(const char* what);
inline void Require(bool condition, const char* what) {
  if (!condition) Fail(what);
}

// Prints a step, indented by the calls that are on their way, when the environment asks for a trace.
void Trace(const char* what, const void* whom = nullptr, int id = 0);

// One life of a module, from its opening to its closing. The first is the host.
struct Plugin {
  // Started, and neither stopped nor rejected.
  bool IsIn() const { return started && !out; }
  // What it registers stays until somebody takes it back.
  bool IsSettled() const { return IsIn() && !stopping; }

  Module* module = nullptr;  // null for the host, and once it is closed
  bool isResident = false;   // the system keeps the module in memory when it is closed
  Callbacks callbacks = {};
  VYRAPluginID id = VYRA_NO_PLUGIN;
  std::string signature;
  bool started = false;
  bool loaded = false;     // its start has returned and accepted
  bool duplicate = false;  // accepted by itself, but its signature is taken
  bool enabling = false;
  bool enabled = false;
  bool stopping = false;
  bool out = false;  // its start failed or refused, or its stop has ended
  bool closed = false;
  bool hasErrorCallback = false;
  bool wantsReflections = false;
  int epoch = 0;              // rises with each step of its life
  unsigned alwaysThrows = 0;  // which of its lifecycle functions do: bits by Function
  enum Function { kStart, kEnable, kDisable, kStop };
};

enum class Family {
  flightLoop,
  draw,
  sniffer,
  window,
  hotKey,
  camera,
  menu,
  command,
  planesWait,
  objectLoad,
  subscription,
  dataRef,
  probe,
  enumeration,
  count
};

// What a plugin registered: the refcon that the library hands back is the address of its registration.
struct Registration {
  Family family;
  Plugin* owner;
  int serial;
  int count = 1;         // how often it is registered; for one-shot callbacks, how many calls are owed
  int most = 1;          // the highest count so far
  bool gone = true;      // not registered yet, or not any more
  bool revived = false;  // a destroyed window that was moved to the front before it was freed
  bool alwaysThrows = false;
  int touched = 0;  // rises when something happens to it
  const void* handle = nullptr;
  int which = 0;   // phase, name, command ...
  int before = 0;  // of draw callbacks, sniffers and command handlers
  // Of flight loops: when they are due, as long as that is known.
  bool known = false;
  float interval = 0;
  float lastTime = 0;
  int lastCycle = 0;

  bool IsDue(float now, int cycle) const;
};

// A call into the library that is on its way. Whichever way it ends, the dispatched plugin is what it was.
class Call {
 public:
  explicit Call(const char* name);
  ~Call();
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;

  // Somebody who is to be called before the call returns, unless something happens to them meanwhile.
  void Expect(const Registration& registration) {
    if (!registration.gone) Expect(&registration, *registration.owner, registration.touched);
  }
  void Expect(const Plugin& plugin) { Expect(&plugin, plugin, 0); }

  // The call returned without an exception: all who were expected have been called.
  void Returned() const;

  // A callback is entered. A call may consist of several walks over the library's lists, told apart by
  // `stage`; within one, nobody is called more often than registered, and nobody who came after it began.
  void Enter(const Registration& registration, int stage);
  void Enter(const Plugin& plugin);
  // A callback, or a service of the host, has returned: the next walk begins not earlier.
  void Left();

  Call* const outer;
  int phase = -1;  // of a pass of flight loops
  float now = 0;
  int step = 0;          // of a frame
  int repeatsOwed = -1;  // how many commands are held that may be continued

 private:
  struct Expected {
    const void* who;
    const Plugin* plugin;
    int touched;
    int epoch;
  };
  void Expect(const void* who, const Plugin& plugin, int touched) {
    if (plugin.enabled && !plugin.stopping) expected.push_back({who, &plugin, touched, plugin.epoch});
  }
  int CallsOf(const void* who, std::size_t since = 0) const;

  VYRAPluginID caller;
  int stageNow = -1;
  int walkBegan;
  int lastLeft;
  std::vector<const void*> called;
  std::size_t inWalk = 0;  // where in it the walk begins
  std::vector<Expected> expected;
};

// What unloads plugins.
enum Unloader { kByShutdown = 1, kByReload = 2, kByPlane = 4 };

struct Book {
  Plugin& Add(Module* module, const Callbacks& callbacks);
  Registration& Register(Family family, Plugin& owner);
  // A registration of the plugin's own that is to be made once more, or a new one.
  Registration& RegisterAgain(Family family, Plugin& owner);
  // Notes that one more is there, or one less.
  void Added(Registration& registration);
  static void Removed(Registration& registration);
  auto& Of(Family family) { return families[static_cast<std::size_t>(family)]; }
  // A registration of this family, of whomever, also one that is gone; null when there never was one.
  Registration* Any(Family family);
  // A handle that the library is to check: of this family, live or stale, or none at all.
  void* AnyHandle(Family family);
  // The registration that had a handle last, or null.
  Registration* Last(Family family, const void* handle);
  // The same while it is there.
  Registration* Find(Family family, const void* handle);
  // Whether the library knows another plugin by this signature.
  bool IsTaken(const std::string& signature, const Plugin& by) const;
  // After an outermost call of the host that returned without an exception.
  void CheckAtRest() const;

  Plugin& Host() { return plugins.front(); }
  const Plugin& Host() const { return plugins.front(); }

  std::deque<Plugin> plugins;
  std::deque<Registration> registrations;
  std::array<std::vector<Registration*>, static_cast<std::size_t>(Family::count)> families;
  Registration* dataRefs[8] = {};                  // who publishes a name
  Registration* camera = nullptr;                  // who controls it
  std::set<std::pair<const Plugin*, void*>> held;  // the commands that plugins began
  unsigned interrupted = 0;                        // what an exception kept from unloading all that it was to
  std::vector<int> buttons;                        // held
  Call* call = nullptr;                            // the innermost on its way
  int depth = 0;                                   // how many are
  int serial = 0;
};

extern Book gBook;

// Makes one call into the library.
template <class Function>
auto Do(const char* name, Function function) {
  Call call(name);
  if constexpr (std::is_void_v<decltype(function())>) {
    function();
    call.Returned();
  } else {
    const auto result = function();
    call.Returned();
    return result;
  }
}

}  // namespace calls
