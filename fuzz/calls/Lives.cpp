#include "Lives.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "Actions.h"
#include "Entries.h"
#include "Folders.h"
#include "Input.h"
#include "Menus.h"

namespace calls {

namespace {

void EnterErrorCallback(Plugin& self) {
  Require(self.hasErrorCallback && !self.closed, "an error callback is called that is not set");
  Require(VYRAGetMyID() == self.id, "an error is reported to another plugin");
  ++gBook.reporting;
  const StThen then([] { --gBook.reporting; });
  Acts(self, 2);
  if (gInput.OneIn(16)) Throw(self);
}

Plugin& BeginLife(Module& module) {
  Plugin& self = gBook.Add(&module, *module.callbacks);
  self.isResident = module.isResident;
  module.plugin = &self;
  self.id = VYRAGetMyID();  // what it is to become
  self.openedBy = gBook.call->number;
  Trace("  -> opened", &self);
  return self;
}

}  // namespace

void Opened(Module& module) {
  Plugin& self = BeginLife(module);
  try {
    Acts(self, 3);
  } catch (const std::exception&) {  // would end the process if it left a constructor
  }
}

namespace {

// Nothing is left of a plugin whose module is about to be closed.
void CheckLeft(const Plugin& self) {
  if (gBook.interrupted != 0) return;
  for (const auto& [owner, command] : gBook.held) {
    Require(owner != &self, "a command is still held by a plugin that left");
  }
  const MenuState* const menu = gMenuBook.At(gMenuBook.plugins);
  Require(menu == nullptr || !menu->known || menu->CountOf(self) == 0,
          "an item of a plugin that left is still in the menu of all");
}

void ForgetRegistrationsOf(const Plugin& self) {
  for (Registration& registration : gBook.registrations) {
    if (registration.owner == &self) registration.gone = true;
  }
}

}  // namespace

void Closing(Module& module) {
  if (module.plugin == nullptr) return;  // the process ends
  Plugin& self = *module.plugin;
  Trace("  -> closing", &self);
  Require(module.inside == 0, "a module is closed while its code runs");
  Require(module.exceptions == 0, "a module is closed under an exception of its own");
  Require(!self.IsIn(), "a module is closed that was not stopped");
  CheckLeft(self);
  self.closed = true;
  self.module = nullptr;
  ForgetRegistrationsOf(self);
  const VYRAPluginID holder = VYRAFindPluginBySignature(self.signature.c_str());
  Require(self.signature.empty() || holder != self.id || gBook.IsTaken(self.signature, self) ||
              gBook.interrupted != 0,
          "a module is closed while its plugin is on record");
}

namespace {

void CheckNewPlace(const Plugin& self) {
  Require(self.id > 0 && self.id < VYRACountPlugins(), "a new plugin is not on record");
  Require(VYRAFindPluginByPath("brelund.skyvora.skyvora") == VYRA_HOST_PLUGIN,
          "a plugin starts where there is no host");
  for (const Plugin& other : gBook.plugins) {
    if (&other == &self || other.id != self.id || other.closed) continue;
    const bool isOver = other.out || !other.started;
    Require(isOver && (other.module->plugin != &other || other.module->inside == 0),
            "an ID is given out while the code of the plugin that had it may still run");
  }
}

// Before its disable callback a plugin has lost what one alone can have.
void LoseAll(const Plugin& self) {
  Planes& planes = gBook.planes;
  if (planes.known && (planes.holder == nullptr || planes.holder->owner != &self)) return;
  planes.queueKnown = false;
  planes.holder = nullptr;
  planes.known = false;
}

// What it took back while it was being disabled it loses without being told, unless it was enabled again.
void LoseAgain(const Plugin& self) {
  LoseAll(self);
  if (self.enabled || gBook.camera == nullptr || gBook.camera->owner != &self) return;
  gBook.camera = nullptr;
  gBook.cameraKnown = true;
}

// A plugin is on its way out: the library drops what it registered.
void Leave(Plugin& self) {
  gBook.unloading = true;
  gMenuBook.Forget(self);
  FreeProbesOf(self);
  self.waiting.clear();
  std::erase_if(gBook.planes.queue, [&](const auto& entry) { return entry.second->owner == &self; });
  LoseAll(self);
}

void Name(Plugin& self, char* outName, char* outSignature, char* outDescription) {
  std::memset(outName, 'n', VYRA_PLUGIN_INFO_SIZE);  // without an end, now and then
  if (!gInput.OneIn(8)) outName[3] = '\0';
  std::strcpy(outDescription, "");
  self.signature = "fuzz.";
  self.signature += std::to_string(gBook.plugins.size());
  if (gInput.OneIn(12)) self.signature = gInput.OneOf(gBook.plugins).signature;
  std::strcpy(outSignature, self.signature.c_str());
}

void LifeActs(Plugin& self, Plugin::Function function) {
  Acts(self, 5);
  if ((self.alwaysThrows & (1U << function)) != 0 || gInput.OneIn(16)) Throw(self);
}

// A resident module is opened once for all its lives. The first of them ends without a word when the plugins
// are unloaded by its constructor: what that registered is gone by the time the module is started.
void Revive(Module& module) {
  Plugin* const last = module.plugin;
  if (last != nullptr && !last->out && last->openedBy == gBook.call->number) return;
  if (last != nullptr && !last->out) {
    last->out = true;
    Leave(*last);
    ForgetRegistrationsOf(*last);
  }
  BeginLife(module);
}

// The files are gone through in their order, and the second module of a folder is for when the first does
// not become a plugin.
void CheckFile(Plugin& self) {
  Call& call = *gBook.call;
  self.place = Folders::PlaceOf(self.module);
  Require(self.place > call.placeOfLast, "the modules of a folder are not loaded in their order");
  call.placeOfLast = self.place;
  if (self.place != Folders::kOlder) return;
  for (const Plugin& other : gBook.plugins) {
    Require(
        other.place != Folders::kNewer || other.openedBy != call.number || !other.IsIn() || other.duplicate,
        "both modules of a folder are loaded");
  }
}

}  // namespace

int Start(Module& module, char* outName, char* outSignature, char* outDescription) {
  if (module.isResident) Revive(module);
  Plugin& self = *module.plugin;
  Require(!self.started, "a module is started that runs already");
  CheckFile(self);
  self.id = VYRAGetMyID();
  Trace("  -> start", &self, self.id);
  CheckNewPlace(self);
  self.started = true;
  Name(self, outName, outSignature, outDescription);
  const auto reject = [&] {
    self.out = true;
    self.enabled = false;
    Leave(self);
  };
  try {
    LifeActs(self, Plugin::kStart);
  } catch (...) {
    reject();
    throw;
  }
  const int result = gInput.OneIn(12) ? 0 : 1;
  if (result == 0) reject();
  self.duplicate = gBook.IsTaken(self.signature, self);
  self.loaded = true;
  Trace("  <- start", &self, result);
  return result;
}

namespace {

Plugin& EnterLife(Module& module, Plugin::Function function, const char* what, bool allowed,
                  const char* fault) {
  Plugin& self = *module.plugin;
  Trace(what, &self, self.id);
  Require(allowed && self.IsIn(), fault);
  gBook.call->InTurn(self, function);
  Require(VYRAGetMyID() == self.id, "a plugin is called as another");
  ++self.epoch;
  return self;
}

}  // namespace

int Enable(Module& module) {
  const Plugin& plugin = *module.plugin;
  Plugin& self = EnterLife(module, Plugin::kEnable, "  -> enable",
                           !plugin.enabled && !plugin.enabling && !plugin.stopping && !plugin.duplicate,
                           "a plugin is enabled that is enabled, or on its way out");
  self.enabling = true;
  const StThen then([&] { self.enabling = false; });
  LifeActs(self, Plugin::kEnable);
  const int result = gInput.OneIn(10) ? 0 : 1;
  if (!self.out) self.enabled = result != 0;
  Trace("  <- enable", &self, result);
  return result;
}

void Disable(Module& module) {
  Plugin& self = EnterLife(module, Plugin::kDisable, "  -> disable", module.plugin->enabled,
                           "a plugin is disabled that is not enabled");
  self.enabled = false;
  ++self.disables;
  LoseAll(self);
  const StThen then([&] { LoseAgain(self); });
  LifeActs(self, Plugin::kDisable);
}

void Stop(Module& module) {
  Plugin& self =
      EnterLife(module, Plugin::kStop, "  -> stop", !module.plugin->stopping, "a plugin is stopped twice");
  self.stopping = true;
  const StThen then([&] {
    self.stopping = self.enabled = false, self.out = true;
    Leave(self);
  });
  LifeActs(self, Plugin::kStop);
}

void Message(Module& module, VYRAPluginID from, int message, void* param) {
  Plugin& self = *module.plugin;
  RequireTold(from, message, 0);
  Require(param == gBook.call->param, "a message comes with another parameter");
  Trace("  -> message", &self, self.id);
  Require(self.enabled && VYRAGetMyID() == self.id, "a message reaches a plugin that is not enabled");
  gBook.call->Enter(self);
  Acts(self, 5);
  if (gInput.OneIn(16)) Throw(self);
}

void Error(Module& module, const char* message) {
  if (gBook.call != nullptr) gBook.call->reports.emplace_back(message);
  EnterErrorCallback(*module.plugin);
}

}  // namespace calls
