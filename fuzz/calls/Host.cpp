#include "Host.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <memory>
#include <utility>

#include "../../tests/ForEachService.h"
#include "Actions.h"
#include "Folders.h"
#include "Input.h"
#include "Menus.h"

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
    if constexpr (std::is_same_v<Result, int>) return gHost.isQuiet ? 0 : gInput.Below(4);
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

// Notes what the library asks for. `menu` is not known any more when that leads to other calls.
void Asked(std::array<int, 4> service, int menu = 0) {
  if (gBook.call != nullptr) gBook.call->services.push_back(service);
  Trace("  -> service", nullptr, service[0]);
  const std::uint64_t operations = gOperations;
  const auto forget = [&] {
    MenuState* const state = gMenuBook.At(menu);
    if (state != nullptr && gOperations != operations) state->known = false;
  };
  try {
    gHost.MayAct();
  } catch (...) {
    forget();
    throw;
  }
  forget();
}

int CreateMenu(int parent, int position, const char* name) {
  const int menu = ++gHost.menus;
  if (std::strcmp(name, "Plugins") == 0) {
    gMenuBook.states.clear();
    gMenuBook.plugins = menu;
    gMenuBook.states[menu] = {nullptr, &gBook.Host(), false, true, {}};
  }
  // The item from which it hangs is in the menu of all before it is made.
  MenuState* const above = gMenuBook.At(parent);
  if (gBook.call != nullptr && gBook.call->hangs != nullptr && above != nullptr)
    above->items.push_back({gHost.items, nullptr, 0, 1, gBook.call->hangs});
  Asked({kCreateMenu, parent, position, menu});
  return menu;
}

int AppendMenuItem(int menu, int position, const char*, int) {
  const int item = ++gHost.items;
  Asked({kAppendMenuItem, menu, position, item}, menu);
  return item;
}

void SetMenuItemName(int menu, int position, const char*, int) {
  Asked({kSetMenuItemName, menu, position, 0}, menu);
}

void RemoveMenuItem(int menu, int position) {
  MenuState* const state = gMenuBook.At(menu);
  if (state != nullptr && state->known && !state->owner->stopping) {
    const bool isThere = position >= 0 && position < static_cast<int>(state->items.size());
    Require(isThere || gBook.interrupted != 0, "no item is removed");
    if (isThere) state->items.erase(state->items.begin() + position);
  }
  Asked({kRemoveMenuItem, menu, position, 0}, menu);
}

void DestroyMenu(int menu) { Asked({kDestroyMenu, menu, 0, 0}); }

void SetAircraftModel(int plane, const char*, const char*) {
  ++gBook.planes.selfLoading;
  const std::unique_ptr<int, void (*)(int*)> then(&gBook.planes.selfLoading, [](int* count) { --*count; });
  Asked({kSetAircraftModel, plane, 0, 0});
}

int CountAircraft(int*, int*, VYRAPluginID*) {
  if (gHost.isQuiet) return 0;
  gHost.MayAct();
  return gHost.aircraft = gInput.Below(6);
}

void CommandButtonPress(const int* buttons, int up, int pass) {
  if (gBook.call->phase == 0) {
    Require(up == 0 && pass == 1, "held buttons are repeated as others");
    for (const int held : gBook.buttons) Require(*buttons++ == held, "another button is repeated");
    Require(*buttons == 0, "a button is repeated that is not held");
  }
  Asked({kButton, *buttons, up, pass});
}

void DrawObjects(VYRAObjectRef, int, int, float x, float, float, float heading, float pitch, float roll) {
  Require(heading == 2 && pitch == 1 && roll == 3, "an object is turned another way");
  Asked({kDrawObject, static_cast<int>(x), 0, 0});
}

VYRACommandRef FindCommand(const char*, const char*, int) {
  gHost.MayAct();
  return gInput.OneOf(gHost.commands);
}

// What a leaving plugin holds is ended.
void EndedFor(VYRACommandRef command) {
  // Of several who are on their way out, it is not known which.
  std::erase_if(gBook.held,
                [&](const auto& held) { return held.second == command && !held.first->IsSettled(); });
}

template <int isBegin, int isEnd>
void CommandPhase(VYRACommandRef command) {
  Call& call = *gBook.call;
  if (isBegin + isEnd == 0) Require(call.repeatsOwed-- > 0, "more commands are continued than were held");
  if (isEnd == 1 && !call.usesCommand) EndedFor(command);
  call.services.push_back({kCommand, isBegin, isEnd, gHost.NumberOf(command)});
  if (gInput.OneIn(2)) {
    Contain([&] {
      Call hook("VYRACommandHook");
      hook.told = {isBegin != 0 ? 0 : isEnd != 0 ? 2 : 1, 0, 0};
      VYRACommandHook(command, isBegin, isEnd, 1);
    });
  }
  gHost.MayAct();
}

// Of all runs in this process: the library gives a host's probe to the next one that asks, also after a new
// start.
int gProbesMade = 0;

int CreateProbe() {
  const int probe = gProbesMade++;
  Asked({kCreateProbe, probe, 0, 0});
  return probe;
}

int ProbeTerrainXYZ(int probe, const float*, float*, float*, float*, int*) {
  Require(probe >= 0 && probe < gProbesMade, "a probe is asked that the host never made");
  Asked({kProbe, probe, 0, 0});
  return gHost.probeHits = gInput.Below(2);
}

VYRAObjectRef Load() {
  int& object = gInput.OneOf(gHost.loads);
  if (gInput.OneIn(5)) return nullptr;
  ++object;
  return &object;
}

VYRAObjectRef LoadObject(const char*) {
  Asked({kLoadObject, 0, 0, 0});
  return Load();  // now, as an exception of that would leave it with nobody
}

void UnloadObject(VYRAObjectRef object) {
  if (object != nullptr)
    Require(--*static_cast<int*>(object) >= 0, "an object is unloaded more often than loaded");
  Asked({kUnloadObject, 0, 0, 0});
}

int LookupObjects(const char*, float, float, VYRALibraryEnumerator_f enumerator, void* refcon) {
  gHost.MayAct();
  if (enumerator == nullptr) return 0;
  const int count = gInput.Below(3);
  for (int i = 0; i < count; ++i) Contain([&] { enumerator("objects/tree", refcon); });
  return count;
}

void LoadObjectAsync(const char*, VYRAObjectLoaded_f completion, void* delivery) {
  gHost.pendingLoads.push_back({completion, delivery, std::exchange(gHost.loading, nullptr)});
  gHost.MayAct();
  if (gInput.OneIn(4)) Contain([] { gHost.CompleteLoad(); });
}

void ShowMessage(const char*, const char*, const char*, const char*) {
  Require(gHost.services.serviceTableRevision > 2, "a message is shown that the host does not know");
  ++gHost.messages;
  gHost.MayAct();
}

void HostReceiveMessage(VYRAPluginID from, int message, void* param) {
  const auto& told = gBook.call->told;
  Require(!told || *told == std::array{from, message, 0}, "the host is sent another message");
  Require(param == gBook.call->param, "a message comes to the host with another parameter");
  Require(VYRAGetMyID() == VYRA_HOST_PLUGIN, "the host gets a message as another plugin");
  gBook.call->Enter(gBook.Host());
  if (gBook.depth < kDeepest && gInput.OneIn(3)) Contain([] { Act(gBook.Host()); });
  gHost.MayAct();
}

}  // namespace

Host::Host() {
#define FILL_SLOT(service) FillSlot(services.service);
  FOR_EACH_SERVICE(FILL_SLOT)
#define ITS_OWN(service) services.service = calls::service;
  // clang-format off
  ITS_OWN(GetMouseLocation) ITS_OWN(GetElapsedTime) ITS_OWN(GetNthAircraftModel) ITS_OWN(GetSystemPath)
  ITS_OWN(GetPrefsPath) ITS_OWN(CreateMenu) ITS_OWN(AppendMenuItem) ITS_OWN(FindCommand) ITS_OWN(CreateProbe)
  ITS_OWN(ProbeTerrainXYZ) ITS_OWN(LoadObject) ITS_OWN(UnloadObject) ITS_OWN(LookupObjects)
  ITS_OWN(LoadObjectAsync) ITS_OWN(ShowMessage) ITS_OWN(HostReceiveMessage) ITS_OWN(SetMenuItemName)
  ITS_OWN(RemoveMenuItem) ITS_OWN(DestroyMenu) ITS_OWN(SetAircraftModel) ITS_OWN(CountAircraft)
  ITS_OWN(CommandButtonPress) ITS_OWN(DrawObjects)
  // clang-format on
#undef ITS_OWN
                              services.CommandBegin = CommandPhase<1, 0>;
  services.CommandRepeat = CommandPhase<0, 0>;
  services.CommandEnd = CommandPhase<0, 1>;
  for (int& load : loads) commands[(&load - loads) % 5] = &load;  // any address does
}

// No plugin that throws keeps another from being loaded, and enabled: only a shutdown meanwhile does.
void CheckStart(const Call& start, int shutdowns, int placeOfLast) {
  if (start.placeOfLast < 0 || gBook.shutdowns != shutdowns) return;
  Require(start.placeOfLast >= placeOfLast, "a start leaves modules out");
  for (const Plugin& plugin : gBook.plugins) {
    if (plugin.openedBy != start.number || !plugin.IsSettled() || !plugin.loaded || plugin.duplicate)
      continue;
    Require(plugin.epoch > 0,
            "a start leaves a plugin as it is instead of asking it whether it can be enabled");
  }
}

void Host::Start() {
  services.serviceTableRevision = gInput.OneIn(4) ? 2 : 4;
  services.hostVersion = gInput.OneIn(4) ? 567 : 568;
  gFolders.size = gInput.OneIn(3) ? Folders::kFew : Folders::kMany;
  Call call("VYRAInitializePlugins");
  call.GoesThroughAll();
  const StThen then([&, shutdowns = gBook.shutdowns, placeOfLast = gFolders.PlaceOfLast()] {
    CheckStart(call, shutdowns, placeOfLast);
  });
  VYRAInitializePlugins(gFolders.SystemPath().c_str(), &services, nullptr);
}

void Host::MayAct() {
  if (isQuiet) return;
  if (gBook.depth < kDeepest && gInput.OneIn(8)) Contain([&] { Event(); });
  if (gBook.call != nullptr) gBook.call->Left();
}

void Host::CompleteLoad() {
  if (pendingLoads.empty()) return;
  const auto place = pendingLoads.begin() + gInput.Below(static_cast<int>(pendingLoads.size()));
  const PendingLoad load = *place;
  pendingLoads.erase(place);
  const VYRAObjectRef object = Load();
  Call call("load completed");
  if (load.record != nullptr) {
    Plugin& owner = *load.record->owner;
    load.record->handle = object;
    const bool stays = owner.IsSettled() && owner.loaded;
    if (stays && !owner.enabled) owner.waiting.push_back(load.record);
    if (stays && owner.enabled && owner.module != nullptr && load.record->which != 0)
      call.Expect(*load.record);
  }
  load.completion(object, load.delivery);
  call.Returned();
}

int Host::NumberOf(VYRACommandRef command) const {
  return static_cast<int>(std::find(std::begin(commands), std::end(commands), command) -
                          std::begin(commands));
}

}  // namespace calls
