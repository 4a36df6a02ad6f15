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
#include "Input.h"
#include "Menus.h"
#include "Windows.h"

namespace calls {

namespace {

// Runs what may unload plugins. An exception that leaves it may leave a plugin half unloaded, until the same
// is called again, or the shutdown.
template <class Function>
void Unloading(unsigned kind, Function function) {
  try {
    function();
    const bool isDone =
        kind != kByReload || gBook.depth == 1;  // a pass inside another leaves the reload to that
    if (isDone) gBook.interrupted &= kind == kByShutdown ? 0 : ~kind;
  } catch (...) {
    gBook.interrupted |= kind;
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

std::vector<const void*> operator+(std::vector<const void*> first, const std::vector<const void*>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

// Who draws in a step: the window that holds the mouse is told of a drag first, then come the windows, the
// back-most first.
std::vector<const void*> MeantToDraw(int step, const WindowStates& windows, int isReflection) {
  std::vector<const void*> meant;
  if (step == 20) {
    for (const WindowState& one : windows) {
      if (one.hasMouse && one.Record().owner->enabled) meant.push_back(&one.Record());
    }
    for (auto one = windows.rbegin(); one != windows.rend(); ++one) {
      if (one->isShown) meant.push_back(&one->Record());
    }
  }
  for (const int before : {1, 0}) {
    meant = meant + gBook.NewestFirst(Family::draw, [&](const Registration& r) {
      return r.before == before && StepOfDrawing(r.which, before) == step &&
             (isReflection != 1 || r.owner->wantsReflections);
    });
  }
  return meant;
}

void Draw() {
  Call call("draw");
  const Registration* const drawn = gInput.OneIn(3) ? gBook.Any(Family::draw) : nullptr;
  call.step = drawn != nullptr   ? StepOfDrawing(drawn->which, drawn->before)
              : gInput.OneIn(3)  ? 20
              : gInput.OneIn(16) ? gInput.Int()
                                 : gInput.Below(28);
  const int isReflection = gInput.Below(3);
  for (const Registration* draw : gBook.Of(Family::draw)) {
    if (call.step == 0 || StepOfDrawing(draw->which, draw->before) != call.step) continue;
    if (isReflection != 1 || draw->owner->wantsReflections) call.Expect(*draw);
  }
  const WindowStates windows = Windows();
  for (const WindowState& one : windows) {
    if (call.step == 20 && one.isShown && !gMayHide) call.Expect(one.Record());
  }
  const auto meant = call.step > 0 && call.step < 27 ? MeantToDraw(call.step, windows, isReflection)
                                                     : std::vector<const void*>();
  const int result = VYRADoDrawingHook(call.step, isReflection);
  call.Returned();
  if (!gMayHide) call.RequireTurns(meant);
  int answer = 1;
  for (const Turn& turn : call.turns) {
    const auto& r = *static_cast<const Registration*>(turn.who);
    // Two steps tell nobody what the callbacks before the host's drawing said.
    if (r.family == Family::draw && r.before != 0 && r.which != 30 && r.which != 55) answer &= turn.answer;
  }
  Require(result == answer, "a step of drawing does not answer what its callbacks do");
}

void Key() {
  const int key = gInput.OneIn(3) ? 0 : 'A' + gInput.Below(3);
  const int flags = gInput.Below(2);
  const int virtualKey = gInput.OneIn(6) ? 0 : 'A' + gInput.Below(3);
  const auto isBefore = [](const Registration& r) { return r.before != 0; };
  const auto isBehind = [](const Registration& r) { return r.before == 0; };
  auto hotKeys = gBook.NewestFirst(
      Family::hotKey, [&](const Registration& r) { return r.which == virtualKey && r.before == flags; });
  std::vector<const void*> meant = gBook.NewestFirst(Family::sniffer, isBefore) + hotKeys;
  for (const WindowState& one : Windows()) {
    if (one.hasFocus && one.Record().owner->enabled) meant.push_back(&one.Record());
  }
  meant = meant + gBook.NewestFirst(Family::sniffer, isBehind);
  if (key == 0 && flags == 0 && virtualKey == 0) meant.clear();
  bool isConsumed = false;
  Call call("VYRAKeyPressHook");
  call.told = {key, flags, virtualKey};
  const int result = VYRAKeyPressHook(key, flags, virtualKey);
  const auto consumes = [&](const Turn& turn) {
    const auto& r = *static_cast<const Registration*>(turn.who);
    return r.family != Family::sniffer || turn.answer == 0;
  };
  if (!gMayHide) call.RequireTurns(meant, consumes);
  for (const Turn& turn : call.turns) {
    Require(!isConsumed, "a key goes on that was consumed");
    isConsumed = consumes(turn);
  }
  Require(result == (isConsumed ? 0 : 1), "the host hears wrongly whether a key was consumed");
}

bool IsTaken(const Turn& turn) { return turn.answer != 0; }

// A place for the mouse, mostly in a window.
std::array<int, 2> AnyPlace(WindowStates& windows) {
  if (windows.empty() || gInput.OneIn(4)) return {gInput.Below(32), gInput.Below(32)};
  const auto& edges = gInput.OneOf(windows).edges;
  const auto from = [](int edge) { return std::clamp(edge, -1000, 1000) + gInput.Below(14) - 1; };
  return {from(edges[0]), from(edges[3])};
}

void Mouse() {
  WindowStates windows = Windows();
  const auto [x, y] = AnyPlace(windows);
  const bool isDown = gInput.OneIn(2);
  std::vector<const void*> meant;
  if (isDown) meant = HitAt(windows, x, y);
  for (const WindowState& one : windows) {
    if (!isDown && one.hasMouse && one.Record().owner->enabled) meant.push_back(&one.Record());
  }
  Call call("VYRAMouseClickHook");
  call.told = {x, y, isDown ? VYRA_MOUSE_DOWN : VYRA_MOUSE_UP};
  const StThen then([&] {
    if (isDown || call.IsDisturbed()) return;
    for (const WindowState& one : Windows())
      Require(!one.hasMouse, "a window holds the mouse after its release");
  });
  const int result = VYRAMouseClickHook(x, y, isDown ? 1 + gInput.Below(2) : 0);
  if (gMayHide) return;
  if (isDown) {
    call.RequireTurns(meant, IsTaken);
  } else {
    call.RequireTurns(meant);
  }
  if (call.IsDisturbed()) return;
  const bool isTaken = !call.turns.empty() && (!isDown || IsTaken(call.turns.back()));
  Require(result == (isTaken ? 0 : 1), "the host hears wrongly whether a window took a click");
  for (WindowState& one : windows) {
    if (!isDown || isTaken) one.hasMouse = isDown && &one.Record() == call.turns.back().who;
  }
  WindowStates now = Windows();
  // The windows of plugins that left before are freed as the click ends.
  for (WindowStates* states : {&windows, &now})
    std::erase_if(*states, [](const WindowState& one) { return !one.Record().owner->IsIn(); });
  Require(windows == now, "the wrong window holds the mouse after a click");
}

void Cursor() {
  WindowStates windows = Windows();
  const auto [x, y] = gInput.OneIn(12) ? std::array{gInput.Int(), gInput.Int()} : AnyPlace(windows);
  std::vector<const void*> meant = HitAt(windows, x, y);
  std::erase_if(meant, [](const void* who) { return static_cast<const Registration*>(who)->before == 0; });
  Call call("VYRACursorHook");
  call.told = {x, y, 0};
  const int result = VYRACursorHook(x, y);
  call.RequireTurns(meant, IsTaken);
  Require(result == (call.turns.empty() ? 0 : call.turns.back().answer),
          "the cursor is another than a window's");
}

void Wheel() {
  WindowStates windows = Windows();
  const auto [x, y] = AnyPlace(windows);
  const int clicks = gInput.Int();
  const std::vector<const void*> meant = HitAt(windows, x, y);
  Call call("VYRAScrollWheelHook");
  call.told = {x, 1, clicks};
  const int result = VYRAScrollWheelHook(x, y, 1, clicks);
  call.RequireTurns(meant, IsTaken);
  const bool isTaken = !call.turns.empty() && IsTaken(call.turns.back());
  Require(result == (isTaken ? 0 : 1), "the host hears wrongly whether a window took the wheel");
}

void Camera() {
  float values[7] = {0, 1, 2, 3, 4, 5, 6};
  const bool isAsked = gBook.camera != nullptr && gBook.camera->owner->enabled;
  const Registration* const refused = isAsked ? nullptr : gBook.camera;
  std::vector<const void*> meant;
  if (isAsked) meant.push_back(gBook.camera);
  const bool known = gBook.cameraKnown;
  Call call("VYRACameraHook");
  const int result =
      VYRACameraHook(&values[0], &values[1], &values[2], &values[3], &values[4], &values[5], &values[6]);
  if (known) call.RequireTurns(meant);
  if (gBook.camera == refused) gBook.camera = nullptr;  // who may not be asked loses it
  if (call.IsDisturbed()) return;
  const int answer = call.turns.empty() ? 0 : call.turns.back().answer;
  Require(result == 1 - answer, "the host hears wrongly who has the camera");
  for (int i = 0; i < 7; ++i) {
    Require(values[i] == static_cast<float>(answer != 0 ? i + 10 : i), "the camera is not where it was put");
  }
}

// The host's numbers of items and menus, mostly of those that there are.
int AnyItem() {
  std::vector<int> items;
  for (const auto& [number, state] : gMenuBook.states) {
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
  if (picked != nullptr) known = gBook.IsSure() && menu->known;
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
  if (!gBook.IsSure() || (menu != nullptr && !menu->known)) return;
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

template <int event>
void Broadcast() {
  Call call("broadcast");
  if (VYRACountPlugins() > 0) {
    for (const Plugin& plugin : gBook.plugins) call.Expect(plugin);
  }
  constexpr bool hasPlane = event == VYRA_EVENT_PLANE_LOADED || event == VYRA_EVENT_PLANE_UNLOADED;
  constexpr bool hasParam = hasPlane || event == VYRA_EVENT_BROADCAST_108;
  const bool isOther = hasPlane ? gInput.OneIn(3) : hasParam;
  const auto param = reinterpret_cast<void*>(static_cast<std::intptr_t>(isOther ? 1 + gInput.Below(9) : 0));
  call.param = param;
  // The planes' own plugins are told more: of the mouse, when they are disabled.
  if (!hasPlane || isOther) call.told = {VYRA_HOST_PLUGIN, MessageOf(event), 0};
  const auto receivers = gBook.Receivers();
  Unloading(event == VYRA_EVENT_PLANE_UNLOADED && !isOther ? kByPlane : 0,
            [&] { VYRAEventHook(event, param, nullptr, 0, 0); });
  call.Returned();
  if (!hasPlane || isOther) call.RequireTurns(receivers);
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
  if (!gInput.OneIn(3)) return;  // plugins are to live for some time
  Unloading(kByShutdown, [] {
    Call call("VYRAShutdownPlugins");
    call.GoesThroughAll();
    VYRAShutdownPlugins();
  });
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
    Command, Command, Command, Repeat, SomeBroadcast, SomeBroadcast, Broadcast<VYRA_EVENT_PLANE_LOADED>,
    Broadcast<VYRA_EVENT_PLANE_UNLOADED>, ViewChanged, Scenery, Unknown, Reload, Shutdown, Start, CompleteLoad,
    CompleteLoad};
// clang-format on

}  // namespace

void Host::Event() { gInput.OneOf(kEvents)(); }

int StepOfDrawing(int phase, int isBefore) {
  static const std::map<int, int> first = {{0, 1},   {5, 2},   {10, 4},   {15, 6},   {20, 8},
                                           {25, 10}, {30, 12}, {35, 13},  {40, 14},  {45, 16},
                                           {55, 18}, {50, 19}, {101, 21}, {100, 23}, {102, 25}};
  const auto found = first.find(phase);
  if (found == first.end() || isBefore < 0 || isBefore > 1) return 0;
  const bool hasOneStep = phase == 0 || phase == 30 || phase == 35 || phase == 55;
  return found->second + (isBefore != 0 || hasOneStep ? 0 : 1);
}

}  // namespace calls
