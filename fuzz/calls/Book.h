// What the driver knows by itself: who is loaded and in which state, who registered what, and which calls
// into the library are on their way. What the library does is held against it.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
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

struct Registration;

// One life of a module, from its opening to its closing. The first is the host.
struct Plugin {
  // Started, and neither stopped nor rejected.
  bool IsIn() const { return started && !out; }
  // What it registers stays until somebody takes it back.
  bool IsSettled() const { return IsIn() && !stopping; }

  Module* module = nullptr;    // null for the host, and once it is closed
  bool isResident = false;     // the system keeps the module in memory when it is closed
  std::uint64_t openedBy = 0;  // the number of the call in which this life began
  int place = -1;              // of its file, as Folders counts
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
  int epoch = 0;     // rises with each step of its life
  int disables = 0;  // how often it was disabled
  int features[2] = {};
  std::multiset<void*> objects;        // that it loaded
  std::vector<Registration*> waiting;  // loads that were completed while it was disabled
  unsigned alwaysThrows = 0;           // which of its lifecycle functions do: bits by Function
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
  int disables = 0;  // of its owner, when it was made
  int touched = 0;   // rises when something happens to it
  const void* handle = nullptr;
  int which = 0;   // phase, name, key ...
  int before = 0;  // of draw callbacks, sniffers and command handlers; of hot keys, their modifiers
  int types = 0;   // of datarefs, the next two as well
  int writable = 0;
  bool hasAccessors = false;
  // Of flight loops: when they are due, as long as that is known.
  bool known = false;
  float interval = 0;
  float lastTime = 0;
  int lastCycle = 0;

  bool IsDue(float now, int cycle) const;
};

// A callback that a call has led to.
struct Turn {
  const void* who;  // a registration, or of messages a plugin
  int answer = 0;
};

// What the host is asked for, in this order: which service, and what it is told.
using Services = std::vector<std::array<int, 4>>;

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

  // The same, for callbacks that are known in full: they are called in this order, up to the first after
  // which `ends` says so. Nothing is known when somebody made calls of his own meanwhile.
  template <class Ends>
  void RequireTurns(const std::vector<const void*>& meant, Ends ends) const {
    if (disturbed) return;
    std::size_t turn = 0;
    for (const void* who : meant) {
      Require(turn < turns.size() && turns[turn].who == who,
              "a callback's turn is passed over, or another's");
      if (ends(turns[turn++])) break;
    }
    Require(turn == turns.size(), "a callback is called that has no turn");
  }
  void RequireTurns(const std::vector<const void*>& meant) const {
    RequireTurns(meant, [](const Turn&) { return false; });
  }
  // What the caller's error callback was told: this, or nothing.
  void RequireReport(const Plugin& self, const char* report) const;
  // A plugin is enabled, disabled or stopped. Of a start and a shutdown, which do it to all, it is known in
  // which order.
  void InTurn(const Plugin& plugin, Plugin::Function function);

  // What the host was asked for meanwhile.
  void RequireServices(const Services& meant) const {
    if (!disturbed) Require(services == meant, "the host is asked for something else");
  }

  // A callback is entered. A call may consist of several walks over the library's lists, told apart by
  // `stage`; within one, nobody is called more often than registered, and nobody who came after it began.
  void Enter(const Registration& registration, int stage);
  void Enter(const Plugin& plugin);
  // A callback, or a service of the host, has returned: the next walk begins not earlier.
  void Left();
  // A callback's answer, as it ends.
  void Answered(int answer) { turns.back().answer = answer; }

  bool IsDisturbed() const { return disturbed; }
  void GoesThroughAll() { goesThroughAll = true; }

  Call* const outer;
  const std::uint64_t number;  // no other call of this process has it
  int phase = -1;              // of a pass of flight loops
  float now = 0;
  int step = 0;          // of a frame
  int repeatsOwed = -1;  // how many commands are held that may be continued
  std::vector<Turn> turns;
  std::vector<std::string> reports;        // to an error callback
  std::optional<std::array<int, 3>> told;  // what every callback is to be told
  const void* param = nullptr;             // of a message, or of the item that is picked
  const Plugin* hangs = nullptr;           // whose new menu hangs from an item of the menu "Plugins"
  bool usesCommand = false;                // begins or ends one itself
  int latestRequest = 0;                   // for the planes, that was told that they are to be had
  int placeOfLast = -1;                    // of the file whose module was started last
  std::optional<const void*> taker;        // of the keyboard focus
  Services services;                       // what the host was asked for, where that is looked at

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
  bool callerHears;        // of its mistakes
  bool disturbed = false;  // there were other calls before this one returned
  bool goesThroughAll = false;
  std::array<VYRAPluginID, 4> latest = {-1, -1, -1, -1};  // by Plugin::Function
  int stageNow = -1;
  int walkBegan;
  int lastLeft;
  std::vector<const void*> called;
  std::size_t inWalk = 0;  // where in it the walk begins
  std::vector<Expected> expected;
};

// What holds at the end of a callback or of a call, also when it throws.
template <class Then>
class StThen {
 public:
  explicit StThen(Then function) : then(function) {}
  ~StThen() { then(); }
  StThen(const StThen&) = delete;
  StThen& operator=(const StThen&) = delete;

 private:
  Then then;
};

// What unloads plugins.
enum Unloader { kByShutdown = 1, kByReload = 2, kByPlane = 4 };

// The writers of a dataref have another refcon than its readers: so many bytes behind its registration.
constexpr int kWriterOffset = 1;

// Who holds the AI planes, and what of it the library keeps.
struct Planes {
  // The library names the same holder.
  void CheckHolder();
  // Somebody is told that the planes are to be had: a plugin that is being disabled gives them back before
  // its disable callback, so that the driver hears of it here first.
  void Offered();
  // A plugin asked for the planes: it holds them now, or waits.
  void Take(const Registration& request) {
    holder = lastHolder = &request;
    limit = -1;
    wishes.clear();
  }

  const Registration* holder = nullptr;      // the request by which it got them
  const Registration* lastHolder = nullptr;  // also when it may have lost them
  bool known = true;
  int limit = -1;
  std::map<int, std::string> wishes;  // models, by plane
  std::vector<std::pair<int, const Registration*>> queue;
  int requests = 0;  // so far
  bool queueKnown = true;
  int telling = 0;              // how many are being told that the planes are to be had
  int selfLoading = 0;          // how many models the library has the host load
  static inline int most = -1;  // planes, as the host said last; of all runs
  static inline int off[24];    // the datarefs that switch the host's own pilots off
};

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
  // A plugin's own that are there, the oldest first.
  std::vector<Registration*> OwnOf(Family family, const Plugin& owner);
  // A handle that the library is to check: of this family, live or stale, or none at all.
  void* AnyHandle(Family family);
  // The registration that had a handle last, or null.
  Registration* Last(Family family, const void* handle);
  // The same while it is there.
  Registration* Find(Family family, const void* handle);
  // Whether a plugin has an error callback.
  bool Hears(VYRAPluginID id) const;
  // Whether the library knows another plugin by this signature.
  bool IsTaken(const std::string& signature, const Plugin& by) const;
  // Whether the driver knows what there is: not while plugins are being unloaded.
  bool IsSure() const { return !unloading && interrupted == 0; }
  // The plugins that get a message to all.
  std::vector<const void*> Receivers() const;
  // The registrations that are there and whose owner may be called, the newest first.
  template <class IsMeant>
  std::vector<const void*> NewestFirst(Family family, IsMeant isMeant) const;
  // After an outermost call of the host that returned without an exception.
  void CheckAtRest() const;
  void CheckHeld() const;

  Plugin& Host() { return plugins.front(); }
  const Plugin& Host() const { return plugins.front(); }

  std::deque<Plugin> plugins;
  std::deque<Registration> registrations;
  std::array<std::vector<Registration*>, static_cast<std::size_t>(Family::count)> families;
  Registration* dataRefs[8] = {};  // who publishes a name
  Registration* camera = nullptr;  // who controls it
  bool cameraKnown = true;         // whether nobody does when that is null
  int cameraDuration = 0;
  // The handlers of a command on one side of the host's own handling, in the order in which they are called.
  std::map<std::pair<const void*, bool>, std::vector<const Registration*>> handlers;
  std::map<int, std::vector<const Registration*>> subscribers;  // of each shared item, in their order
  std::set<std::pair<const Plugin*, void*>> held;               // the commands that plugins began
  unsigned interrupted = 0;  // what an exception kept from unloading all that it was to
  int interruptions = 0;     // so far
  std::vector<int> buttons;  // held
  bool buttonsKnown = true;
  bool unloading = false;  // a plugin has left since the host's call began
  Planes planes;
  int shutdowns = 0;     // so far
  int losingCamera = 0;  // as the next
  int reporting = 0;     // how many error callbacks are on the stack
  int losing = 0;        // how many windows are being told that they lose the keyboard focus
  Call* call = nullptr;  // the innermost on its way
  int depth = 0;         // how many are
  int serial = 0;
};

extern Book gBook;
extern std::uint64_t gOperations;  // calls into the library, of all runs

template <class IsMeant>
std::vector<const void*> Book::NewestFirst(Family family, IsMeant isMeant) const {
  const auto& all = families[static_cast<std::size_t>(family)];
  std::vector<const Registration*> found;
  for (const Registration* r : all) {
    if (!r->gone && r->owner->enabled && isMeant(*r)) found.push_back(r);
  }
  std::sort(found.begin(), found.end(), [](const auto* a, const auto* b) { return a->serial > b->serial; });
  return {found.begin(), found.end()};
}

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
