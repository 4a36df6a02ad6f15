// What the host tells the library of: events, input and questions. Each is held against what the rules make
// of it.
#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Actions.h"
#include "Folders.h"
#include "Host.h"
#include "HostInput.h"
#include "Input.h"
#include "Menus.h"
#include "Windows.h"

namespace calls {

namespace {

// Runs what may unload plugins. An exception that leaves it may leave a plugin half unloaded, until the same
// is called again, or the shutdown.
template <class Function>
void Unloading(unsigned kind, Function function) {
  const int before = gBook.interruptions;
  try {
    function();
    // A pass inside another leaves the reload to that, and an aircraft that was loaded while one was unloaded
    // is not unloaded with it.
    const bool isDone = kind == kByReload ? gBook.depth == 1 : gBook.interruptions == before;
    if (isDone || kind == kByShutdown) gBook.interrupted &= kind == kByShutdown ? 0 : ~kind;
  } catch (...) {
    gBook.interrupted |= kind;
    ++gBook.interruptions;
    throw;
  }
}

// A reload, which the start of modules in a pass tells of, also has the aircraft's plugins loaded.
void CheckReload(const Call& pass) {
  if (pass.placeOfLast < 0 || gBook.depth > 1 || VYRACountPlugins() == 0) return;
  Require(std::any_of(gBook.plugins.begin(), gBook.plugins.end(),
                      [&](const Plugin& plugin) {
                        return plugin.openedBy >= pass.number && Folders::IsOfAircraft(plugin.place);
                      }),
          "a reload leaves the aircraft's plugins out");
}

template <int event>
void Pass() {
  Call pass("pass");
  pass.phase = event == VYRA_EVENT_FLIGHT_LOOPS_1 ? 1 : 0;
  pass.now = gInput.OneIn(8) ? gInput.Float() : gHost.time;
  const int cycle = VYRAGetCycleNumber() + 1;
  for (const Registration* loop : gBook.Of(Family::flightLoop)) {
    if (loop->known && loop->which == pass.phase && loop->IsDue(pass.now, cycle)) pass.Expect(*loop);
  }
  bool known = true;
  const auto meant = gBook.NewestFirst(Family::flightLoop, [&](const Registration& loop) {
    if (loop.which != pass.phase) return false;
    known = known && loop.known;
    return loop.IsDue(pass.now, cycle);
  });
  Unloading(kByReload, [&] { VYRAEventHook(event, nullptr, nullptr, pass.now, 0); });
  if (known && gBook.IsSure()) pass.RequireTurns(meant);
  Require(VYRAGetCycleNumber() >= cycle, "a pass is not counted");
  pass.Returned();
  CheckReload(pass);
}

// The host's numbers of items and menus, mostly of those that there are.
int AnyItem() {
  const bool isForHandlers = gInput.OneIn(2);
  std::vector<int> items;
  for (const auto& [number, state] : gMenuBook.states) {
    if (isForHandlers && !state.hasHandler) continue;
    for (const MenuItem& one : state.items) items.push_back(one.hostItem);
  }
  return items.empty() || gInput.OneIn(4) ? gInput.Below(gHost.items % 64 + 2) : gInput.OneOf(items);
}

int AnyMenuNumber() {
  std::vector<int> numbers;
  for (const auto& [number, state] : gMenuBook.states) numbers.push_back(number);
  return numbers.empty() || gInput.OneIn(4) ? gInput.Below(gHost.menus % 64 + 2) : gInput.OneOf(numbers);
}

void PickItem() {
  const int item = AnyItem();
  bool known = gBook.IsSure();
  const MenuState* menu = nullptr;
  const MenuItem* picked = nullptr;
  for (const auto& [number, state] : gMenuBook.states) {
    known = known && state.known;
    for (const MenuItem& one : state.items) {
      if (one.hostItem == item) menu = &state, picked = &one;
    }
  }
  // A plugin that is being stopped loses its menus and items at a moment of which the driver does not hear.
  const auto stays = [](const Plugin* owner) { return owner == nullptr || owner->IsSettled(); };
  if (picked != nullptr) known = gBook.IsSure() && menu->known && stays(menu->owner) && stays(picked->owner);
  std::vector<const void*> meant;
  const bool isEnabled = picked != nullptr && menu->hasHandler && picked->enabled != 0;
  if (isEnabled && menu->owner->enabled) meant.push_back(menu->record);
  const bool isOurs = picked != nullptr;
  Call call("VYRAMenuHook");
  call.param = known && isOurs ? picked->ref : nullptr;
  const int result = VYRAMenuHook(item);
  if (!known || call.IsDisturbed()) return;
  call.RequireTurns(meant);
  Require(result == (isOurs ? 0 : 1), "the host hears wrongly whose item was picked");
}

void AskMenu() {
  const int number = gInput.OneIn(3) ? gMenuBook.plugins : AnyMenuNumber();
  const int position = gInput.OneIn(8) ? gInput.Int() : gInput.Below(6);
  int check = 77;
  const int answered = Do<VYRACheckMenuHook>(number, position, &check);
  const int enabled = Do<VYRAMenuItemEnabled>(number, position);
  const MenuState* const menu = gMenuBook.At(number);
  if (!gBook.IsSure() || (menu != nullptr && (!menu->known || !menu->owner->IsSettled()))) return;
  const bool isThere = menu != nullptr && position >= 0 && position < static_cast<int>(menu->items.size());
  const MenuItem item = isThere ? menu->items[static_cast<std::size_t>(position)] : MenuItem();
  const bool hasMark = isThere && item.check >= 0 && item.check <= 2;
  Require(answered == (hasMark ? 0 : 1) && check == (hasMark ? item.check - 1 : 77),
          "an item has another check mark");
  const bool mayBeCalled = isThere && VYRAIsPluginEnabled(menu->owner->id) != 0;
  Require(enabled == (!isThere ? 1 : mayBeCalled ? item.enabled : 0), "an item counts wrongly as enabled");
}

void AskPlanes() {
  Planes& planes = gBook.planes;
  const int total = gInput.Below(20) - 1;
  const int flag = gInput.Below(2);
  planes.CheckHolder();
  const bool isAsked = planes.holder != nullptr && planes.selfLoading == 0;
  const int count = Do<VYRAGetNumberPlanesToHandle>(total, flag);
  const bool isLimited = flag == 0 && isAsked && planes.limit != -1;
  Require(!planes.known || count == (isLimited ? std::min(total, planes.limit) : total),
          "the host is to handle another number of planes");
  planes.most = total;
  char path[4096] = "wing.acf";
  const int plane = gInput.OneIn(4) ? gInput.Int() : gInput.Below(3);
  Do<VYRAUpdatePlaneNameAndPath>(plane, nullptr, path);
  const auto wish = planes.wishes.find(plane);
  const bool isWished = isAsked && plane != 0 && wish != planes.wishes.end();
  Require(!planes.known || path == (isWished ? wish->second : "wing.acf"), "a plane flies as another model");
}

void Command() {
  const Registration* const handler = gInput.OneIn(3) ? nullptr : gBook.Any(Family::command);
  const VYRACommandRef command =
      handler != nullptr ? const_cast<void*>(handler->handle) : gInput.OneOf(gHost.commands);
  const int isBegin = gInput.Below(2);
  const int isEnd = gInput.Below(2);
  const int isBefore = handler != nullptr ? handler->before : gInput.Below(2);
  std::vector<const void*> meant;
  for (const Registration* r : gBook.handlers[{command, isBefore != 0}]) {
    if (r->owner->enabled) meant.push_back(r);
  }
  Call call("VYRACommandHook");
  call.told = {isEnd != 0 ? 2 : isBegin != 0 ? 0 : 1, 0, 0};
  const int result = VYRACommandHook(command, isBegin, isEnd, isBefore);
  const auto stops = [](const Turn& turn) { return turn.answer == 0; };
  call.RequireTurns(meant, stops);
  const bool isStopped = !call.turns.empty() && stops(call.turns.back());
  Require(result == (isStopped ? 0 : 1), "the host hears wrongly whether a command was stopped");
}

void Repeat() {
  Call call("repeat");
  call.repeatsOwed = static_cast<int>(gBook.held.size());
  std::vector<std::pair<VYRAPluginID, void*>> held;
  for (const auto& [plugin, command] : gBook.held) {
    if (VYRAIsPluginEnabled(plugin->id) != 0 && plugin->enabled) held.emplace_back(plugin->id, command);
  }
  std::sort(held.begin(), held.end());
  VYRAEventHook(VYRA_EVENT_COMMAND_REPEAT, nullptr, nullptr, 0, 0);
  if (call.IsDisturbed() || !gBook.IsSure()) return;
  // Plugins that left meanwhile have their menus taken back and their commands ended as the event ends.
  std::erase_if(call.services, [](const std::array<int, 4>& service) {
    return service[0] != kCommand || service[1] != 0 || service[2] != 0;
  });
  Require(call.services.size() == held.size(), "a command that is held is not continued");
  for (std::size_t i = 0; i < held.size(); ++i)
    Require(call.services[i][3] == gHost.NumberOf(held[i].second), "another command is continued");
}

// The numbers of the events' messages, and whether they come with the event's parameter.
constexpr int MessageOf(int event) {
  switch (event) {
    case VYRA_EVENT_BROADCAST_101:
      return 101;
    case VYRA_EVENT_PLANE_LOADED:
      return 102;
    case VYRA_EVENT_BROADCAST_103:
      return 103;
    case VYRA_EVENT_BROADCAST_104:
      return 104;
    case VYRA_EVENT_BROADCAST_105:
      return 105;
    case VYRA_EVENT_PLANE_UNLOADED:
      return 106;
    case VYRA_EVENT_BROADCAST_107:
      return 107;
    default:
      return 108;
  }
}

// Sends the plugins the message of an event. 0 is the user's plane, or no parameter.
template <int event>
void Tell(int number) {
  Call call("broadcast");
  if (VYRACountPlugins() > 0) {
    for (const Plugin& plugin : gBook.plugins) call.Expect(plugin);
  }
  constexpr bool hasPlane = event == VYRA_EVENT_PLANE_LOADED || event == VYRA_EVENT_PLANE_UNLOADED;
  const bool isUsersPlane = hasPlane && number == 0;
  const auto param = reinterpret_cast<void*>(static_cast<std::intptr_t>(number));
  call.param = param;
  // The user's plane's own plugins are told more: of the mouse, when they are disabled.
  if (!isUsersPlane) call.told = {VYRA_HOST_PLUGIN, MessageOf(event), 0};
  const auto receivers = gBook.Receivers();
  Unloading(event == VYRA_EVENT_PLANE_UNLOADED && isUsersPlane ? kByPlane : 0,
            [&] { VYRAEventHook(event, param, nullptr, 0, 0); });
  call.Returned();
  if (!isUsersPlane) call.RequireTurns(receivers);
}

template <int event>
void Broadcast() {
  Tell<event>(event == VYRA_EVENT_BROADCAST_108 ? 1 + gInput.Below(9) : 0);
}

template <int event>
void Plane() {
  Tell<event>(gInput.OneIn(3) ? 1 + gInput.Below(9) : 0);
}

void ViewChanged() {
  const bool ends = gBook.camera != nullptr && gBook.cameraDuration == VYRA_CAMERA_UNTIL_VIEW_CHANGES;
  std::vector<const void*> meant;
  if (ends && gBook.camera->owner->enabled) meant.push_back(gBook.camera);
  const bool known = gBook.cameraKnown && gBook.losing == 0 && gBook.losingCamera == 0;
  Call call("view changed");
  VYRAEventHook(VYRA_EVENT_VIEW_CHANGED, nullptr, nullptr, 0, 0);
  if (known) call.RequireTurns(meant);
  if (ends && !call.IsDisturbed()) gBook.camera = nullptr;
}
void Scenery() {
  const std::string folder = gFolders.SceneryPath();
  Do<VYRAEventHook>(VYRA_EVENT_SCENERY_PACKAGE, const_cast<char*>(folder.c_str()), nullptr, 0.0F, 0.0F);
}
void Unknown() { Do<VYRAEventHook>(14 + gInput.Byte(), nullptr, nullptr, gInput.Float(), 0.0F); }
void Reload() { Do<VYRAReloadPlugins>(); }
void Shutdown() {
  ++gBook.shutdowns;
  Unloading(kByShutdown, [] {
    Call call("VYRAShutdownPlugins");
    call.GoesThroughAll();
    VYRAShutdownPlugins();
  });
}
void RareShutdown() {
  if (gInput.OneIn(3)) Shutdown();  // plugins are to live for some time
}
void Start() { gHost.Start(); }
void CompleteLoad() {
  const bool completesAll = gInput.OneIn(2);
  do {
    gHost.CompleteLoad();
  } while (completesAll && !gHost.pendingLoads.empty() && !gInput.IsSpent());
}

void SomeBroadcast() {
  static void (*const kinds[])() = {Broadcast<VYRA_EVENT_BROADCAST_101>, Broadcast<VYRA_EVENT_BROADCAST_103>,
                                    Broadcast<VYRA_EVENT_BROADCAST_104>, Broadcast<VYRA_EVENT_BROADCAST_105>,
                                    Broadcast<VYRA_EVENT_BROADCAST_107>, Broadcast<VYRA_EVENT_BROADCAST_108>};
  gInput.OneOf(kinds)();
}

// clang-format off
void (*const kEvents[])() = {
    Pass<VYRA_EVENT_FLIGHT_LOOPS_0>, Pass<VYRA_EVENT_FLIGHT_LOOPS_1>, Pass<VYRA_EVENT_FLIGHT_LOOPS_0>, Draw, Draw,
    Draw, Key, Key, Mouse, Mouse, Cursor, Wheel, Camera, PickItem, PickItem, AskMenu, AskMenu, AskPlanes,
    Command, Command, Command, Repeat, SomeBroadcast, SomeBroadcast, Plane<VYRA_EVENT_PLANE_LOADED>,
    Plane<VYRA_EVENT_PLANE_UNLOADED>, ViewChanged, Scenery, Unknown, Reload, RareShutdown, Start, CompleteLoad,
    CompleteLoad};
// clang-format on

}  // namespace

void Host::Event() { gInput.OneOf(kEvents)(); }

void Host::GoOn() {
  if ((gBook.interrupted & kByShutdown) != 0) {
    Shutdown();
  } else if ((gBook.interrupted & kByReload) != 0) {
    Pass<VYRA_EVENT_FLIGHT_LOOPS_1>();
  } else {
    Tell<VYRA_EVENT_PLANE_UNLOADED>(0);
  }
}

}  // namespace calls
