// Menus, commands, planes, terrain probes and scenery objects.
#include <iterator>

#include "Actions.h"
#include "Host.h"
#include "Input.h"
#include "VYRANavigation.h"

namespace calls {

namespace {

// ---- Menus --------------------------------------------------------------------------------------------

VYRAMenuID AnyMenu() {
  return gInput.OneIn(3) ? VYRAFindPluginsMenu() : static_cast<VYRAMenuID>(gBook.AnyHandle(Family::menu));
}

void CreateMenu(Plugin& self) {
  if (self.module == nullptr) return;  // the host's menus would stay
  Registration& r = gBook.Register(Family::menu, self);
  const VYRAMenuID parent = gInput.OneIn(2) ? AnyMenu() : nullptr;
  r.handle = Do("VYRACreateMenu", [&] {
    return VYRACreateMenu(gInput.Text(), parent, gInput.Int(),
                          gInput.OneIn(8) ? nullptr : self.callbacks.menu, &r);
  });
  if (r.handle != nullptr) gBook.Added(r);
}

void DestroyMenu(Plugin& self) {
  const VYRAMenuID menu = AnyMenu();
  Registration* const r = gBook.Find(Family::menu, menu);
  if (r != nullptr && r->owner == &self) Book::Removed(*r);
  Do("VYRADestroyMenu", [&] { VYRADestroyMenu(menu); });
}

void AppendItem(Plugin&) {
  const VYRAMenuID menu = AnyMenu();
  Do("VYRAAppendMenuItem", [&] { VYRAAppendMenuItem(menu, gInput.Text(), nullptr, gInput.Int()); });
}

void ChangeItem(Plugin&) {
  const VYRAMenuID menu = AnyMenu();
  const int item = gInput.Int();
  int check = 0;
  VYRACheckMenuItem(menu, item, gInput.Int());
  VYRACheckMenuItemState(menu, item, &check);
  VYRAEnableMenuItem(menu, item, gInput.Below(2));
  Do("VYRASetMenuItemName", [&] { VYRASetMenuItemName(menu, item, gInput.Text(), 0); });
}

void RemoveItem(Plugin&) {
  const VYRAMenuID menu = AnyMenu();
  Do("VYRARemoveMenuItem", [&] { VYRARemoveMenuItem(menu, gInput.Int()); });
}

void ClearMenu(Plugin&) {
  const VYRAMenuID menu = AnyMenu();
  Do("VYRAClearAllMenuItems", [&] { VYRAClearAllMenuItems(menu); });
}

// ---- Commands -----------------------------------------------------------------------------------------

void FindCommand(Plugin&) {
  Do("VYRAFindCommand", [] { VYRAFindCommand(gInput.Text()); });
}

void MakeCommand(Plugin&) {
  Do("VYRACreateCommand", [] { VYRACreateCommand(gInput.Text(), gInput.Text()); });
}

void HoldCommand(Plugin& self) {
  const VYRACommandRef command = gInput.OneOf(gHost.commands);
  gBook.held.insert({&self, command});
  Do("VYRACommandBegin", [&] { VYRACommandBegin(command); });
}

void EndCommand(Plugin& self) {
  const VYRACommandRef command = gInput.OneOf(gHost.commands);
  Do("VYRACommandEnd", [&] { VYRACommandEnd(command); });
  gBook.held.erase({&self, command});
}

void PressCommand(Plugin&) {
  Do("VYRACommandOnce", [] { VYRACommandOnce(gInput.OneOf(gHost.commands)); });
}

void HandleCommand(Plugin& self) {
  Registration& r = gBook.RegisterAgain(Family::command, self);
  if (r.gone) {
    r.handle = gInput.OneOf(gHost.commands);
    r.before = gInput.Below(2);
  }
  Do("VYRARegisterCommandHandler",
     [&] { VYRARegisterCommandHandler(const_cast<void*>(r.handle), self.callbacks.command, r.before, &r); });
  gBook.Added(r);
}

void LeaveCommand(Plugin& self) {
  Registration* const r = gBook.Any(Family::command);
  if (r == nullptr) return;
  if (r->owner == &self && !r->gone) Book::Removed(*r);
  Do("VYRAUnregisterCommandHandler", [&] {
    VYRAUnregisterCommandHandler(const_cast<void*>(r->handle), r->owner->callbacks.command, r->before, r);
  });
}

// ---- Planes -------------------------------------------------------------------------------------------

void AcquirePlanes(Plugin& self) {
  Registration& r = gBook.Register(Family::planesWait, self);
  char model[] = "Aircraft/wing.acf";
  char* models[] = {model, model, nullptr};
  gBook.Added(r);
  const bool waits = !gInput.OneIn(4);
  const int result = Do("VYRAAcquirePlanes", [&] {
    return VYRAAcquirePlanes(gInput.OneIn(2) ? models : nullptr,
                             waits ? self.callbacks.planesReturned : nullptr, &r);
  });
  if (result != 0 || !waits) r.count = 0;
}

void ReleasePlanes(Plugin&) {
  Do("VYRAReleasePlanes", [] { VYRAReleasePlanes(); });
}

void SetModel(Plugin&) {
  Do("VYRASetAircraftModel", [] { VYRASetAircraftModel(gInput.Int(), gInput.Text()); });
}

void UsePlanes(Plugin&) {
  char fileName[VYRA_PLUGIN_INFO_SIZE];
  char path[VYRA_PATH_SIZE];
  int total = 0;
  Do("VYRASetActiveAircraftCount", [] { VYRASetActiveAircraftCount(gInput.Int()); });
  Do("VYRACountAircraft", [&] { VYRACountAircraft(&total, nullptr, nullptr); });
  Do("VYRAGetNthAircraftModel", [&] { VYRAGetNthAircraftModel(gInput.Int(), fileName, path); });
  Do("VYRADisableAIForPlane", [] { VYRADisableAIForPlane(gInput.Int()); });
  Do("VYRASetUsersAircraft", [] { VYRASetUsersAircraft(gInput.Text()); });
  Do("VYRAReinitUsersPlane", [] { VYRAReinitUsersPlane(); });
}

// ---- Terrain and objects ------------------------------------------------------------------------------

VYRAProbeRef AnyProbe() { return static_cast<VYRAProbeRef>(gBook.AnyHandle(Family::probe)); }

void CreateProbe(Plugin& self) {
  Registration& r = gBook.Register(Family::probe, self);
  r.handle = Do("VYRACreateProbe", [] { return VYRACreateProbe(gInput.OneIn(4) ? gInput.Int() : 0); });
  gBook.Added(r);
}

void DestroyProbe(Plugin&) {
  const VYRAProbeRef probe = AnyProbe();
  if (Registration* r = gBook.Find(Family::probe, probe)) Book::Removed(*r);
  Do("VYRADestroyProbe", [&] { VYRADestroyProbe(probe); });
}

void ProbeTerrain(Plugin&) {
  const VYRAProbeRef probe = AnyProbe();
  const bool isThere = gBook.Find(Family::probe, probe) != nullptr;
  VYRAProbeInfo info = {gInput.OneIn(6) ? gInput.Int() : static_cast<int>(sizeof(info)), {}, {}, {}, 0};
  const int result = Do("VYRAProbeTerrainXYZ", [&] {
    return VYRAProbeTerrainXYZ(probe, gInput.Float(), 0, 0, gInput.OneIn(8) ? nullptr : &info);
  });
  Require(isThere || result == VYRA_PROBE_ERROR, "a destroyed probe answers");
}

VYRAObjectRef AnyObject() {
  return gInput.OneIn(8) ? gBook.AnyHandle(Family::probe) : &gInput.OneOf(gHost.loads);
}

void LoadObject(Plugin&) {
  Do("VYRALoadObject", [] { VYRALoadObject(gInput.Text()); });
}

void LoadObjectLater(Plugin& self) {
  Registration& r = gBook.Register(Family::objectLoad, self);
  gBook.Added(r);  // first: it may be there at once
  Do("VYRALoadObjectAsync",
     [&] { VYRALoadObjectAsync(gInput.Text(), gInput.OneIn(8) ? nullptr : self.callbacks.objectReady, &r); });
}

void UnloadObject(Plugin&) {
  Do("VYRAUnloadObject", [] { VYRAUnloadObject(AnyObject()); });
}

void DrawObject(Plugin&) {
  VYRADrawInfo places[3] = {};
  for (VYRADrawInfo& place : places)
    place.size = gInput.OneIn(12) ? gInput.Int() : static_cast<int>(sizeof(place));
  const int count = std::min(gInput.Int(), 3);
  Do("VYRADrawObjects",
     [&] { VYRADrawObjects(AnyObject(), count, gInput.OneIn(8) ? nullptr : places, 0, 1); });
}

void LookUpObjects(Plugin& self) {
  Registration& r = gBook.Register(Family::enumeration, self);
  Do("VYRALookupObjects",
     [&] { VYRALookupObjects(gInput.Text(), gInput.Float(), gInput.Float(), self.callbacks.found, &r); });
}

void AskNavigation(Plugin&) {
  Do("VYRAFindNavAid",
     [] { VYRAFindNavAid(gInput.Text(), nullptr, nullptr, nullptr, nullptr, gInput.Int()); });
}

const Action kActions[] = {CreateMenu,    CreateMenu,    DestroyMenu,     AppendItem,      AppendItem,
                           ChangeItem,    RemoveItem,    ClearMenu,       FindCommand,     MakeCommand,
                           HoldCommand,   HoldCommand,   EndCommand,      PressCommand,    HandleCommand,
                           HandleCommand, LeaveCommand,  AcquirePlanes,   AcquirePlanes,   ReleasePlanes,
                           SetModel,      UsePlanes,     CreateProbe,     DestroyProbe,    ProbeTerrain,
                           LoadObject,    LoadObject,    LoadObjectLater, LoadObjectLater, UnloadObject,
                           DrawObject,    LookUpObjects, AskNavigation};

}  // namespace

const ActionList kSceneActions = {kActions, std::size(kActions)};

}  // namespace calls
