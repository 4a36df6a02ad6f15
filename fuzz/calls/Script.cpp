#include "Script.h"

#include <algorithm>
#include <cfloat>
#include <exception>
#include <string>
#include <utility>

#include "Actions.h"
#include "Entries.h"
#include "Folders.h"
#include "Host.h"
#include "Input.h"
#include "Menus.h"
#include "Windows.h"

namespace calls {

void Act(Plugin& self) {
  static const ActionList* const areas[] = {&kDisplayActions, &kDataActions, &kManagerActions, &kMenuActions,
                                            &kSceneActions};
  const ActionList& area = *gInput.OneOf(areas);
  area.first[static_cast<std::size_t>(gInput.Byte()) % area.count](self);
}

namespace {

// What the host does on its own. An exception ends there, and the host may go on while it handles it.
void Step() {
  gHost.time += static_cast<float>(gInput.Below(4)) / 4;
  try {
    if (gBook.interrupted != 0 && gInput.OneIn(2)) {
      gHost.GoOn();
    } else if (VYRACountPlugins() == 0 && gInput.Below(4) != 3) {
      gHost.Start();
    } else if (gInput.OneIn(6) && VYRAInitialized() != 0) {
      Act(gBook.Host());
      return;
    } else {
      gHost.Event();
    }
  } catch (const std::exception& failure) {
    try {
      if (gInput.OneIn(3)) gHost.MayAct();
    } catch (const std::exception&) {
    }
    Require(*failure.what() != '\0', "an exception is gone while it is handled");
    return;
  }
  // A call that does nothing: what waits for the end of the outermost call has no more reason to.
  Do<VYRAEventHook>(VYRA_EVENT_UNUSED, nullptr, nullptr, 0.0F, 0.0F);
  gBook.CheckAtRest();
}

// How many calls of the shutdown the callbacks that always throw may end.
int MostFailures() {
  int most = 1;
  for (const Registration& r : gBook.registrations) most += r.alwaysThrows && !r.gone ? 1 : 0;
  for (const Plugin& plugin : gBook.plugins) most += plugin.alwaysThrows != 0 && plugin.IsIn() ? 3 : 0;
  return most;
}

// Calls the host until it has nothing more to throw.
template <class Function>
void UntilDone(Function function) {
  for (int failuresLeft = MostFailures();; --failuresLeft) {
    try {
      function();
      return;
    } catch (const std::exception&) {
      Require(failuresLeft > 0, "a call does not come to its end, however often it is made");
    }
  }
}

// The host takes back what it registered itself.
void Withdraw() {
  const Call call("withdraw");
  for (Registration& r : gBook.registrations) {
    if (r.owner != &gBook.Host() || r.gone) continue;
    const Callbacks& callbacks = kDriver.callbacks;
    for (; r.count > 0; --r.count) {
      void* const handle = const_cast<void*>(r.handle);
      if (r.family == Family::flightLoop) VYRAUnregisterFlightLoopCallback(callbacks.flightLoop, &r);
      if (r.family == Family::draw) VYRAUnregisterDrawCallback(callbacks.draw, r.which, r.before, &r);
      if (r.family == Family::sniffer) VYRAUnregisterKeySniffer(callbacks.sniffer, r.before, &r);
      if (r.family == Family::hotKey) VYRAUnregisterHotKey(static_cast<VYRAHotKeyID>(handle));
      if (r.family == Family::command) VYRAUnregisterCommandHandler(handle, callbacks.command, r.before, &r);
      if (r.family == Family::dataRef) VYRAUnregisterDataAccessor(static_cast<VYRADataRef>(handle));
      if (r.family == Family::probe) VYRADestroyProbe(static_cast<VYRAProbeRef>(handle));
      if (r.family == Family::subscription) {
        const int type = 1 << r.which;
        VYRAUnshareData(("fuzz/shared/" + std::to_string(type)).c_str(), type, callbacks.changed, &r);
      }
    }
    r.gone = true;
  }
  VYRADontControlCamera();
  for (const auto& [owner, command] : std::exchange(gBook.held, {})) VYRACommandEnd(command);
  for (const int button : std::exchange(gBook.buttons, {})) VYRACommandButtonRelease(button);
  for (int& load : gHost.loads) {
    for (int left = load; left > 0; --left) VYRAUnloadObject(&load);
  }
}

// Everything that there was is gone: no event, and no input, calls anybody.
void CheckSilence() {
  gFolders.size = Folders::kNone;
  Do<VYRAInitializePlugins>(gFolders.SystemPath().c_str(), &gHost.services, nullptr);
  const auto quietly = [](auto hook) { Do("silence", hook); };
  float value = 0;
  for (int step = 1; step <= 26; ++step) quietly([&] { VYRADoDrawingHook(step, 0); });
  for (int key = 'A'; key < 'D'; ++key) quietly([&] { VYRAKeyPressHook(key, key % 2, key); });
  for (int at = 0; at < 24; ++at) {
    quietly([&] { VYRACursorHook(at, at); });
    quietly([&] { VYRAMouseClickHook(at, at, 1); });
    quietly([&] { VYRAMouseClickHook(at, at, 0); });
  }
  quietly([&] { VYRACameraHook(&value, &value, &value, &value, &value, &value, &value); });
  for (const VYRACommandRef command : gHost.commands) {
    for (const int isBefore : {0, 1}) quietly([&] { VYRACommandHook(command, 0, 0, isBefore); });
  }
  for (int item = 0; item <= gHost.items; ++item) quietly([&] { VYRAMenuHook(item); });
  for (int event = 0; event < 14; ++event)
    quietly([&] { VYRAEventHook(event, nullptr, nullptr, FLT_MAX, 0); });
}

void Finish() {
  UntilDone([] { Do<VYRAShutdownPlugins>(); });
  while (!gHost.pendingLoads.empty()) UntilDone([] { gHost.CompleteLoad(); });
  UntilDone([] { Do<VYRAShutdownPlugins>(); });
  Require(VYRACountPlugins() == 0, "there are plugins after the shutdown");
  // Whoever waits on for the planes, because one before them threw, is told before the next run.
  UntilDone([] {
    Do<VYRAAcquirePlanes>(nullptr, nullptr, nullptr);
    Do<VYRAReleasePlanes>();
  });
  for (const auto& [number, request] : gBook.planes.queue)
    Require(request->owner != &gBook.Host(), "who waits for the planes is forgotten");
  UntilDone(Withdraw);
  gBook.interrupted = 0;
  gBook.CheckAtRest();
  for (const int load : gHost.loads) Require(load == 0, "an object that was loaded is not unloaded");
  CheckSilence();
  Do<VYRAShutdownPlugins>();
  for (const Plugin& plugin : gBook.plugins) {
    if (plugin.module != nullptr) plugin.module->plugin = nullptr;  // it stays for another run
  }
}

}  // namespace

void Run(const std::uint8_t* data, std::size_t size) {
  gInput = Input(data, size);
  gBook = Book();
  gHost = Host();
  gMenuBook = Menus();
  gMayHide = gInput.OneIn(8);
  Plugin& host = gBook.Add(nullptr, kDriver.callbacks);
  host.id = VYRA_HOST_PLUGIN;
  host.started = host.loaded = host.enabled = true;
  MakeItems();
  MakeSwitches();
  while (!gInput.IsSpent()) Step();
  Finish();
  gBook = Book();
}

std::uint64_t Operations() { return gOperations; }

}  // namespace calls
