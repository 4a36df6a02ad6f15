#include "Book.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Input.h"

namespace calls {

Input gInput;
Book gBook;

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

Call::Call(const char* name)
    : outer(gBook.call), caller(VYRAGetMyID()), walkBegan(gBook.serial), lastLeft(gBook.serial) {
  Trace(name);
  gBook.call = this;
  ++gBook.depth;
}

Call::~Call() {
  gBook.call = outer;
  --gBook.depth;
  Require(VYRAGetMyID() == caller, "the dispatched plugin is not what it was before a call");
}

void Call::Enter(const Registration& registration, int stage) {
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
      if (CallsOf(one.who) == 0) Trace("passed over", one.who, one.plugin->id);
      Require(CallsOf(one.who) > 0, "a callback that was due was passed over");
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

Registration* Book::Any(Family family) {
  const auto& all = Of(family);
  return all.empty() ? nullptr : gInput.OneOf(all);
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
    Require((VYRAIsPluginEnabled(plugin.id) != 0) == plugin.enabled,
            "the library and a plugin differ on whether it is enabled");
  }
  Require(records == 0 || interrupted != 0, "there is a record without a plugin");
}

}  // namespace calls
