#include "Book.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Host.h"
#include "Input.h"
#include "Windows.h"

namespace calls {

Input gInput;
Book gBook;

namespace {

VYRAPluginID HolderOfPlanes() {
  const StQuiet quiet;
  VYRAPluginID holder = INT_MIN;
  VYRACountAircraft(nullptr, nullptr, &holder);
  return holder;
}

}  // namespace

void Planes::CheckHolder() {
  if (VYRAInitialized() == 0) return;
  const VYRAPluginID controller = HolderOfPlanes();
  const VYRAPluginID meant = holder != nullptr ? holder->owner->id : VYRA_NO_PLUGIN;
  // Who is not started yet, or has been stopped, loses them whenever the library forgets it.
  if (holder != nullptr && !holder->owner->IsSettled()) known = false;
  if (known && gBook.IsSure()) Require(controller == meant, "another plugin holds the planes");
  // While plugins leave, whoever held them may or may not have given them back.
  if (controller != meant) known = false;
  if (controller != VYRA_NO_PLUGIN) return;
  holder = nullptr;
  known = true;
}

void Planes::Offered() {
  if (HolderOfPlanes() == VYRA_NO_PLUGIN) holder = nullptr;
}

void Fail(const char* what) {
  std::fprintf(stderr, "FAULT: %s\n", what);
  std::abort();
}

void Trace(const char* what, const void* whom, int id) {
  static const bool wanted = std::getenv("VYRA_FUZZ_TRACE") != nullptr;
  if (!wanted) return;
  std::string name = what;  // of a function template for one function, as compilers write it: that function
  const std::size_t place = name.find("function = ");
  if (place != std::string::npos)
    name = name.substr(place + 11, name.find_first_of(";,]", place) - place - 11);
  std::fprintf(stderr, "%*s%s %p %d (as %d)\n", 2 * gBook.depth, "", name.c_str(), whom, id, VYRAGetMyID());
}

const char* Input::Text() {
  static const std::string long600(600, 'x');
  static const std::string long5000(5000, 'y');
  const char* const texts[] = {"a",     "b/c",           "",     "sim/fuzz",
                               nullptr, long600.c_str(), "%s\n", long5000.c_str()};
  return OneOf(texts);
}

bool Registration::IsDue(float now, int cycle) const {
  if (interval > 0) return now >= lastTime + interval;
  return interval < 0 && static_cast<float>(cycle) >= static_cast<float>(lastCycle) - interval;
}

std::uint64_t gOperations = 0;

Call::Call(const char* name)
    : outer(gBook.call),
      number(++gOperations),
      caller(VYRAGetMyID()),
      callerHears(gBook.Hears(caller)),
      walkBegan(gBook.serial),
      lastLeft(gBook.serial) {
  Trace(name);
  if (outer != nullptr) outer->disturbed = true;
  gBook.call = this;
  ++gBook.depth;
}

Call::~Call() {
  if (outer == nullptr) gBook.unloading = false;
  gBook.call = outer;
  --gBook.depth;
  Require(VYRAGetMyID() == caller, "the dispatched plugin is not what it was before a call");
}

void Call::RequireReport(const Plugin& self, const char* report) const {
  constexpr int kMostReports = 4;  // inside each other
  if (disturbed || !self.IsSettled() || self.module == nullptr || gBook.reporting >= kMostReports) return;
  if (report == nullptr || !callerHears) {
    Require(reports.empty(), "a mistake is reported that nobody made, or to who does not want to hear");
  } else {
    Require(reports.size() == 1 && reports[0] == report, "a mistake is not reported, or as another");
  }
}

void Call::InTurn(const Plugin& plugin, Plugin::Function function) {
  if (!goesThroughAll || plugin.duplicate || !plugin.loaded) return;
  Require(plugin.id > latest[function], "plugins are not gone through in the order of their IDs");
  latest[function] = plugin.id;
}

void Call::Enter(const Registration& registration, int stage) {
  turns.push_back({&registration});
  if (stage < 0) return;
  if (stage != stageNow) {
    walkBegan = lastLeft;
    inWalk = called.size();
  }
  stageNow = stage;
  Require(registration.serial <= walkBegan,
          "a callback is called in the walk during which it was registered");
  Require(CallsOf(&registration, inWalk) < registration.most, "a callback is called twice in one walk");
  called.push_back(&registration);
}

void Call::Enter(const Plugin& plugin) {
  turns.push_back({&plugin});
  Require(CallsOf(&plugin) == 0, "a plugin gets a message twice");
  called.push_back(&plugin);
}

void Call::Left() { lastLeft = gBook.serial; }

int Call::CallsOf(const void* who, std::size_t since) const {
  return static_cast<int>(std::count(called.begin() + static_cast<std::ptrdiff_t>(since), called.end(), who));
}

void Call::Returned() const {
  for (const Expected& one : expected) {
    if (!one.plugin->enabled || one.plugin->epoch != one.epoch) continue;
    if (one.who == one.plugin) {
      Require(CallsOf(one.who) == 1, "a plugin was passed over by a message");
    } else if (static_cast<const Registration*>(one.who)->touched == one.touched) {
      const bool hadTurn =
          std::any_of(turns.begin(), turns.end(), [&](const Turn& turn) { return turn.who == one.who; });
      if (!hadTurn) Trace("passed over", one.who, one.plugin->id);
      Require(hadTurn, "a callback that was due was passed over");
    }
  }
}

Plugin& Book::Add(Module* module, const Callbacks& callbacks) {
  Plugin& plugin = plugins.emplace_back();
  plugin.module = module;
  plugin.callbacks = callbacks;
  if (gInput.OneIn(6)) plugin.alwaysThrows = static_cast<unsigned>(gInput.Below(16));
  return plugin;
}

Registration& Book::Register(Family family, Plugin& owner) {
  Registration& registration = registrations.emplace_back(Registration{family, &owner, ++serial});
  registration.disables = owner.disables;
  registration.alwaysThrows = gInput.OneIn(24);
  Of(family).push_back(&registration);
  return registration;
}

Registration& Book::RegisterAgain(Family family, Plugin& owner) {
  Registration* old = gInput.OneIn(5) ? Any(family) : nullptr;
  return old != nullptr && old->owner == &owner ? *old : Register(family, owner);
}

void Book::Added(Registration& registration) {
  if (std::exchange(registration.gone, false)) {
    registration.serial = ++serial;
    registration.count = 0;
  }
  registration.most = std::max(registration.most, ++registration.count);
  Trace("  added", &registration, registration.count);
  Trace("    as", registration.handle);
  ++registration.touched;
}

void Book::Removed(Registration& registration) {
  Trace("  removed", &registration, registration.count);
  registration.gone = --registration.count <= 0;
  ++registration.touched;
}

bool Book::Hears(VYRAPluginID id) const {
  return std::any_of(plugins.begin(), plugins.end(), [id](const Plugin& plugin) {
    return plugin.id == id && plugin.module != nullptr && plugin.IsIn() && plugin.hasErrorCallback;
  });
}

std::vector<const void*> Book::Receivers() const {
  std::vector<const Plugin*> receivers;
  for (const Plugin& plugin : plugins) {
    if (plugin.enabled && VYRAIsPluginEnabled(plugin.id) != 0) receivers.push_back(&plugin);
  }
  std::sort(receivers.begin(), receivers.end(), [](const auto* a, const auto* b) { return a->id < b->id; });
  return {receivers.begin(), receivers.end()};
}

Registration* Book::Any(Family family) {
  const auto& all = Of(family);
  return all.empty() ? nullptr : gInput.OneOf(all);
}

std::vector<Registration*> Book::OwnOf(Family family, const Plugin& owner) {
  std::vector<Registration*> own;
  for (Registration* one : Of(family)) {
    if (one->owner == &owner && !one->gone) own.push_back(one);
  }
  return own;
}

void* Book::AnyHandle(Family family) {
  static char wild[64];
  const int choice = gInput.Below(16);
  if (choice == 12) return nullptr;
  if (choice == 13) return wild + gInput.Below(64);
  if (choice == 14) family = static_cast<Family>(gInput.Below(static_cast<int>(Family::count)));
  const Registration* registration = Any(family);
  if (registration == nullptr) return nullptr;
  char* const handle = static_cast<char*>(const_cast<void*>(registration->handle));
  Trace("  handle", handle);
  return choice == 15 && handle != nullptr ? handle + 1 + gInput.Below(16) : handle;
}

Registration* Book::Last(Family family, const void* handle) {
  const auto& all = Of(family);
  const auto found = std::find_if(all.rbegin(), all.rend(), [&](const Registration* one) {
    return one->handle == handle && handle != nullptr;
  });
  return found != all.rend() ? *found : nullptr;
}

Registration* Book::Find(Family family, const void* handle) {
  Registration* last = Last(family, handle);
  return last != nullptr && !last->gone ? last : nullptr;
}

bool Book::IsTaken(const std::string& signature, const Plugin& by) const {
  return signature.empty() || std::any_of(plugins.begin(), plugins.end(), [&](const Plugin& other) {
           return &other != &by && other.signature == signature && other.loaded && other.IsIn() &&
                  !other.duplicate && !other.stopping;
         });
}

// What one plugin alone can have, nobody keeps who was disabled.
void Book::CheckHeld() const {
  if (interrupted != 0) return;
  const auto isLost = [](const Registration* r) {
    return r != nullptr && !r->owner->enabled && r->owner->disables != r->disables;
  };
  for (const WindowState& window : Windows()) {
    Require((!window.hasFocus && !window.hasMouse) || window.Record().owner->enabled,
            "a window of a disabled plugin has the focus, or holds the mouse");
  }
  Require(!isLost(camera) || VYRAIsCameraBeingControlled(nullptr) == 0, "a disabled plugin has the camera");
  Require(!isLost(planes.lastHolder) || HolderOfPlanes() != planes.lastHolder->owner->id ||
              !planes.lastHolder->owner->IsIn(),
          "a disabled plugin has the planes");
}

void Book::CheckAtRest() const {
  Require(VYRAGetMyID() == VYRA_HOST_PLUGIN, "a plugin is dispatched between two calls of the host");
  const auto textOf = [](VYRAPluginID id, bool wantsPath) {
    char text[VYRA_PLUGIN_INFO_SIZE] = "?";
    VYRAGetPluginInfo(id, nullptr, wantsPath ? text : nullptr, wantsPath ? nullptr : text, nullptr);
    return std::string(text);
  };
  int records = 0;
  for (VYRAPluginID id = 0; id < VYRACountPlugins(); ++id) {
    Require((textOf(id, true) == "brelund.skyvora.skyvora") == (id == 0),
            "there is no host, or a second one");
    if (!textOf(id, false).empty()) ++records;
  }
  for (const Plugin& plugin : plugins) {
    if (&plugin == &Host()) continue;
    Require(plugin.IsIn() || plugin.closed || plugin.isResident || interrupted != 0,
            "the module of a plugin that left stays open");
    if (!plugin.IsIn()) continue;
    --records;
    Require(plugin.signature == textOf(plugin.id, false), "a plugin's record is not its own");
    Require(!plugin.duplicate, "a plugin whose signature is taken stays");
    Require(VYRAFindPluginBySignature(plugin.signature.c_str()) == plugin.id, "a plugin is not found");
    Require(plugin.waiting.empty() || !plugin.enabled, "an enabled plugin waits for what was loaded");
    Require((VYRAIsPluginEnabled(plugin.id) != 0) == plugin.enabled,
            "the library and a plugin differ on whether it is enabled");
  }
  CheckHeld();
  const VYRAPluginID last = VYRACountPlugins() - 1;
  Require(last <= VYRA_HOST_PLUGIN || !textOf(last, false).empty() || interrupted != 0,
          "the ID of a plugin that left is not given back");
  Require(records == 0 || interrupted != 0, "there is a record without a plugin");
}

}  // namespace calls
