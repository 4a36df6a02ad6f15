#include "Host.h"

#include <cstdio>
#include <cstring>
#include <map>

#include "../../tests/ForEachService.h"
#include "Actions.h"
#include "Folders.h"
#include "Input.h"

namespace calls {

Host gHost;

namespace {

constexpr int kDeepest = 9;

// Runs what a service leads to. Some of its exceptions leave the service.
template <class Function>
void Contain(Function function) {
  try {
    function();
  } catch (const std::exception& failure) {
    Require(*failure.what() != '\0', "an exception is gone while it is handled");
    if (gInput.OneIn(2)) throw;
  }
}

template <class Result, class... Arguments>
void FillSlot(Result (*&slot)(Arguments...)) {
  slot = [](Arguments...) -> Result {
    gHost.MayAct();
    if constexpr (std::is_same_v<Result, int>) return gInput.Below(4);
    return Result();
  };
}

// ---- Services that do more than lead to events --------------------------------------------------------

void GetMouseLocation(int* outX, int* outY, int) {
  gHost.MayAct();
  if (outX != nullptr) *outX = gInput.Below(24);
  if (outY != nullptr) *outY = gInput.Below(24);
}

float GetElapsedTime() {
  gHost.MayAct();
  return gHost.time;
}

void GetNthAircraftModel(int planeIndex, char* outPath, char* outFileName) {
  gHost.MayAct();
  std::snprintf(outPath, 256, "%s", planeIndex == 0 ? gFolders.PlanePath().c_str() : "");
  std::snprintf(outFileName, 256, "wing.acf");
}

void GetSystemPath(char* outPath) {
  gHost.MayAct();
  std::strcpy(outPath, gFolders.SystemPath().c_str());
}

void GetPrefsPath(char* outPath) { std::strcpy(outPath, "/prefs"); }

int CreateMenu(int, int, const char*) {
  const int menu = ++gHost.menus;
  gHost.MayAct();
  return menu;
}

int AppendMenuItem(int, int, const char*, int) {
  const int item = ++gHost.items;
  gHost.MayAct();
  return item;
}

VYRACommandRef FindCommand(const char*, const char*, int) {
  gHost.MayAct();
  return gInput.OneOf(gHost.commands);
}

template <int isBegin, int isEnd>
void CommandPhase(VYRACommandRef command) {
  Call& call = *gBook.call;
  if (isBegin + isEnd == 0) Require(call.repeatsOwed-- > 0, "more commands are continued than were held");
  if (gInput.OneIn(2)) Contain([&] { Do<VYRACommandHook>(command, isBegin, isEnd, 1); });
  gHost.MayAct();
}

// Of all runs in this process: the library gives a host's probe to the next one that asks, also after a new
// start.
int gProbesMade = 0;

int CreateProbe() {
  const int probe = gProbesMade++;
  gHost.MayAct();
  return probe;
}

int ProbeTerrainXYZ(int probe, const float*, float*, float*, float*, int*) {
  Require(probe >= 0 && probe < gProbesMade, "a probe is asked that the host never made");
  gHost.MayAct();
  return gInput.Below(2);
}

VYRAObjectRef Load() {
  int& object = gInput.OneOf(gHost.loads);
  if (gInput.OneIn(5)) return nullptr;
  ++object;
  return &object;
}

VYRAObjectRef LoadObject(const char*) {
  gHost.MayAct();
  return Load();  // now, as an exception of that would leave it with nobody
}

void UnloadObject(VYRAObjectRef object) {
  if (object != nullptr)
    Require(--*static_cast<int*>(object) >= 0, "an object is unloaded more often than loaded");
  gHost.MayAct();
}

int LookupObjects(const char*, float, float, VYRALibraryEnumerator_f enumerator, void* refcon) {
  gHost.MayAct();
  if (enumerator == nullptr) return 0;
  const int count = gInput.Below(3);
  for (int i = 0; i < count; ++i) Contain([&] { enumerator("objects/tree", refcon); });
  return count;
}

void LoadObjectAsync(const char*, VYRAObjectLoaded_f completion, void* delivery) {
  gHost.pendingLoads.push_back({completion, delivery});
  gHost.MayAct();
  if (gInput.OneIn(4)) Contain([] { gHost.CompleteLoad(); });
}

void ShowMessage(const char*, const char*, const char*, const char*) {
  ++gHost.messages;
  gHost.MayAct();
}

void HostReceiveMessage(VYRAPluginID, int, void*) {
  Require(VYRAGetMyID() == VYRA_HOST_PLUGIN, "the host gets a message as another plugin");
  gBook.call->Enter(gBook.Host());
  if (gBook.depth < kDeepest && gInput.OneIn(3)) Contain([] { Act(gBook.Host()); });
  gHost.MayAct();
}

// ---- Events and hooks ---------------------------------------------------------------------------------

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

template <int event>
void Pass() {
  Call pass("pass");
  pass.phase = event == VYRA_EVENT_FLIGHT_LOOPS_1 ? 1 : 0;
  pass.now = gInput.OneIn(8) ? gInput.Float() : gHost.time;
  const int cycle = VYRAGetCycleNumber() + 1;
  for (const Registration* loop : gBook.Of(Family::flightLoop)) {
    if (loop->known && loop->which == pass.phase && loop->IsDue(pass.now, cycle)) pass.Expect(*loop);
  }
  Unloading(kByReload, [&] { VYRAEventHook(event, nullptr, nullptr, pass.now, 0); });
  Require(VYRAGetCycleNumber() >= cycle, "a pass is not counted");
  pass.Returned();
}

void Draw() {
  Call call("draw");
  call.step = gInput.OneIn(3) ? 20 : gInput.Int();
  const int isReflection = gInput.Below(3);
  for (const Registration* draw : gBook.Of(Family::draw)) {
    if (call.step == 0 || StepOfDrawing(draw->which, draw->before) != call.step) continue;
    if (isReflection != 1 || draw->owner->wantsReflections) call.Expect(*draw);
  }
  VYRADoDrawingHook(call.step, isReflection);
  call.Returned();
}

void Key() { Do<VYRAKeyPressHook>(gInput.Below(3), gInput.Below(2), 'A' + gInput.Below(3)); }
void Mouse() { Do<VYRAMouseClickHook>(gInput.Below(24), gInput.Below(24), gInput.Below(2)); }
void Cursor() { Do<VYRACursorHook>(gInput.Below(24), gInput.Int()); }
void Wheel() { Do<VYRAScrollWheelHook>(gInput.Below(24), gInput.Below(24), 0, gInput.Int()); }

void Camera() {
  float values[7] = {};
  Do<VYRACameraHook>(&values[0], &values[1], &values[2], &values[3], &values[4], &values[5], &values[6]);
}

void Menu() {
  int state = 0;
  const int number = gInput.Below(gHost.items % 64 + 2);
  Do<VYRAMenuHook>(number);
  Do<VYRACheckMenuHook>(gInput.Below(gHost.menus % 64 + 2), gInput.Int(), &state);
  Do<VYRAMenuItemEnabled>(gInput.Below(gHost.menus % 64 + 2), gInput.Int());
}

void Planes() {
  char path[4096] = "wing.acf";
  Do<VYRAGetNumberPlanesToHandle>(gInput.Below(20) - 1, gInput.Below(2));
  Do<VYRAUpdatePlaneNameAndPath>(gInput.Int(), nullptr, path);
  Require(std::strlen(path) < sizeof(path), "a plane's path is longer than its buffer");
}

void Command() {
  const VYRACommandRef command = gInput.OneOf(gHost.commands);
  Do<VYRACommandHook>(command, gInput.Below(2), gInput.Below(2), gInput.Below(2));
}

void Repeat() {
  Call call("repeat");
  call.repeatsOwed = static_cast<int>(gBook.held.size());
  VYRAEventHook(VYRA_EVENT_COMMAND_REPEAT, nullptr, nullptr, 0, 0);
}

template <int event>
void Broadcast() {
  Call call("broadcast");
  if (VYRACountPlugins() > 0) {
    for (const Plugin& plugin : gBook.plugins) call.Expect(plugin);
  }
  constexpr bool hasPlane = event == VYRA_EVENT_PLANE_LOADED || event == VYRA_EVENT_PLANE_UNLOADED;
  const auto plane =
      reinterpret_cast<void*>(static_cast<std::intptr_t>(hasPlane && gInput.OneIn(400) ? 1 : 0));
  Unloading(event == VYRA_EVENT_PLANE_UNLOADED ? kByPlane : 0,
            [&] { VYRAEventHook(event, plane, nullptr, 0, 0); });
  call.Returned();
}

void ViewChanged() { Do<VYRAEventHook>(VYRA_EVENT_VIEW_CHANGED, nullptr, nullptr, 0.0F, 0.0F); }
void Scenery() {
  const std::string folder = gFolders.SceneryPath();
  Do<VYRAEventHook>(VYRA_EVENT_SCENERY_PACKAGE, const_cast<char*>(folder.c_str()), nullptr, 0.0F, 0.0F);
}
void Unknown() { Do<VYRAEventHook>(14 + gInput.Byte(), nullptr, nullptr, gInput.Float(), 0.0F); }
void Reload() { Do<VYRAReloadPlugins>(); }
void Shutdown() {
  Unloading(kByShutdown, [] { Do<VYRAShutdownPlugins>(); });
}
void Start() { gHost.Start(); }
void CompleteLoad() { gHost.CompleteLoad(); }

// clang-format off
void (*const kEvents[])() = {
    Pass<VYRA_EVENT_FLIGHT_LOOPS_0>, Pass<VYRA_EVENT_FLIGHT_LOOPS_1>, Pass<VYRA_EVENT_FLIGHT_LOOPS_0>, Draw, Draw,
    Draw, Key, Key, Mouse, Mouse, Cursor, Wheel, Camera, Menu, Planes, Command, Command, Repeat,
    Broadcast<VYRA_EVENT_BROADCAST_101>, Broadcast<VYRA_EVENT_BROADCAST_108>, Broadcast<VYRA_EVENT_PLANE_LOADED>,
    Broadcast<VYRA_EVENT_PLANE_UNLOADED>, ViewChanged, Scenery, Unknown, Reload, Shutdown, Start, CompleteLoad,
    CompleteLoad};
// clang-format on

}  // namespace

Host::Host() {
#define FILL_SLOT(service) FillSlot(services.service);
  FOR_EACH_SERVICE(FILL_SLOT)
#define ITS_OWN(service) services.service = calls::service;
  // clang-format off
  ITS_OWN(GetMouseLocation) ITS_OWN(GetElapsedTime) ITS_OWN(GetNthAircraftModel) ITS_OWN(GetSystemPath)
  ITS_OWN(GetPrefsPath) ITS_OWN(CreateMenu) ITS_OWN(AppendMenuItem) ITS_OWN(FindCommand) ITS_OWN(CreateProbe)
  ITS_OWN(ProbeTerrainXYZ) ITS_OWN(LoadObject) ITS_OWN(UnloadObject) ITS_OWN(LookupObjects)
  ITS_OWN(LoadObjectAsync) ITS_OWN(ShowMessage) ITS_OWN(HostReceiveMessage)
  // clang-format on
#undef ITS_OWN
                  services.CommandBegin = CommandPhase<1, 0>;
  services.CommandRepeat = CommandPhase<0, 0>;
  services.CommandEnd = CommandPhase<0, 1>;
  for (int& load : loads) commands[(&load - loads) % 5] = &load;  // any address does
}

void Host::Start() {
  services.serviceTableRevision = gInput.OneIn(4) ? 2 : 4;
  services.hostVersion = gInput.OneIn(4) ? 567 : 568;
  gFolders.size = gInput.OneIn(3) ? Folders::kFew : Folders::kMany;
  Do<VYRAInitializePlugins>(gFolders.SystemPath().c_str(), &services, nullptr);
}

void Host::Event() { gInput.OneOf(kEvents)(); }

void Host::MayAct() {
  if (gBook.depth < kDeepest && gInput.OneIn(8)) Contain([&] { Event(); });
  if (gBook.call != nullptr) gBook.call->Left();
}

void Host::CompleteLoad() {
  if (pendingLoads.empty()) return;
  const auto place = pendingLoads.begin() + gInput.Below(static_cast<int>(pendingLoads.size()));
  const PendingLoad load = *place;
  pendingLoads.erase(place);
  const VYRAObjectRef object = Load();
  Do("load completed", [&] { load.completion(object, load.delivery); });
}

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
