// Menus, commands, planes, terrain probes and scenery objects.
#include <iterator>

#include "Actions.h"
#include "Host.h"
#include "Input.h"
#include "VYRANavigation.h"

namespace calls {

namespace {

// ---- Menus --------------------------------------------------------------------------------------------

void CreateMenu(Plugin& self) {
  if (self.module == nullptr) return;  // the host's menus would stay
  Registration& r = gBook.Register(Family::menu, self);
  const VYRAMenuID parent = gInput.OneIn(2) ? AnyMenu() : nullptr;
  r.handle = Do<VYRACreateMenu>(gInput.Text(), parent, gInput.Int(),
                                gInput.OneIn(8) ? nullptr : self.callbacks.menu, &r);
  if (r.handle != nullptr) gBook.Added(r);
}

void DestroyMenu(Plugin& self) {
  const VYRAMenuID menu = AnyMenu();
  Registration* const r = gBook.Find(Family::menu, menu);
  if (r != nullptr && r->owner == &self) Book::Removed(*r);
  Do<VYRADestroyMenu>(menu);
}

// ---- Commands -----------------------------------------------------------------------------------------

void HoldCommand(Plugin& self) {
  const VYRACommandRef command = gInput.OneOf(gHost.commands);
  gBook.held.insert({&self, command});
  Do<VYRACommandBegin>(command);
}

void EndCommand(Plugin& self) {
  const VYRACommandRef command = gInput.OneOf(gHost.commands);
  Do<VYRACommandEnd>(command);
  gBook.held.erase({&self, command});
}

void PressCommand(Plugin&) { Do<VYRACommandOnce>(gInput.OneOf(gHost.commands)); }

void HandleCommand(Plugin& self) {
  Registration& r = gBook.RegisterAgain(Family::command, self);
  if (r.gone) {
    r.handle = gInput.OneOf(gHost.commands);
    r.before = gInput.Below(2);
  }
  Do<VYRARegisterCommandHandler>(const_cast<void*>(r.handle), self.callbacks.command, r.before, &r);
  gBook.Added(r);
}

void LeaveCommand(Plugin& self) {
  Registration* const r = gBook.Any(Family::command);
  if (r == nullptr) return;
  if (r->owner == &self && !r->gone) Book::Removed(*r);
  Do<VYRAUnregisterCommandHandler>(const_cast<void*>(r->handle), r->owner->callbacks.command, r->before, r);
}

// ---- Planes -------------------------------------------------------------------------------------------

void AcquirePlanes(Plugin& self) {
  Registration& r = gBook.Register(Family::planesWait, self);
  char model[] = "Aircraft/wing.acf";
  char* models[] = {model, model, nullptr};
  gBook.Added(r);
  const bool waits = !gInput.OneIn(4);
  const int result = Do<VYRAAcquirePlanes>(gInput.OneIn(2) ? models : nullptr,
                                           waits ? self.callbacks.planesReturned : nullptr, &r);
  if (result != 0 || !waits) r.count = 0;
}

// ---- Terrain and objects ------------------------------------------------------------------------------

void CreateProbe(Plugin& self) {
  Registration& r = gBook.Register(Family::probe, self);
  r.handle = Do<VYRACreateProbe>(gInput.OneIn(4) ? gInput.Int() : 0);
  gBook.Added(r);
}

void DestroyProbe(Plugin&) {
  const VYRAProbeRef probe = AnyHandle<VYRAProbeRef>(Family::probe);
  if (Registration* r = gBook.Find(Family::probe, probe)) Book::Removed(*r);
  Do<VYRADestroyProbe>(probe);
}

void ProbeTerrain(Plugin&) {
  const VYRAProbeRef probe = AnyHandle<VYRAProbeRef>(Family::probe);
  const bool isThere = gBook.Find(Family::probe, probe) != nullptr;
  VYRAProbeInfo info = {gInput.OneIn(6) ? gInput.Int() : static_cast<int>(sizeof(info)), {}, {}, {}, 0};
  const int result =
      Do<VYRAProbeTerrainXYZ>(probe, gInput.Float(), 0.0F, 0.0F, gInput.OneIn(8) ? nullptr : &info);
  Require(isThere || result == VYRA_PROBE_ERROR, "a destroyed probe answers");
}

VYRAObjectRef AnyObject() {
  return gInput.OneIn(8) ? gBook.AnyHandle(Family::probe) : &gInput.OneOf(gHost.loads);
}

void LoadObjectLater(Plugin& self) {
  Registration& r = gBook.Register(Family::objectLoad, self);
  gBook.Added(r);  // first: it may be there at once
  Do<VYRALoadObjectAsync>(gInput.Text(), gInput.OneIn(8) ? nullptr : self.callbacks.objectReady, &r);
}

void UnloadObject(Plugin&) { Do<VYRAUnloadObject>(AnyObject()); }

void DrawObject(Plugin&) {
  VYRADrawInfo places[3] = {};
  for (VYRADrawInfo& place : places)
    place.size = gInput.OneIn(12) ? gInput.Int() : static_cast<int>(sizeof(place));
  const int count = std::min(gInput.Int(), 3);
  Do<VYRADrawObjects>(AnyObject(), count, gInput.OneIn(8) ? nullptr : places, 0, 1);
}

void LookUpObjects(Plugin& self) {
  Registration& r = gBook.Register(Family::enumeration, self);
  Do<VYRALookupObjects>(gInput.Text(), gInput.Float(), gInput.Float(), self.callbacks.found, &r);
}

// clang-format off
const Action kActions[] = {
    CreateMenu, CreateMenu, DestroyMenu, kAny<VYRAAppendMenuItem>, kAny<VYRAAppendMenuItem>,
    kAny<VYRAAppendMenuSeparator>, kAny<VYRACheckMenuItem>, kAny<VYRACheckMenuItemState>,
    kAny<VYRAEnableMenuItem>, kAny<VYRASetMenuItemName>, kAny<VYRARemoveMenuItem>, kAny<VYRAClearAllMenuItems>,
    kAny<VYRAFindCommand>, kAny<VYRACreateCommand>, HoldCommand, HoldCommand, EndCommand, PressCommand,
    HandleCommand, HandleCommand, LeaveCommand, AcquirePlanes, AcquirePlanes, kAny<VYRAReleasePlanes>,
    kAny<VYRASetAircraftModel>, kAny<VYRASetActiveAircraftCount>, kAny<VYRACountAircraft>,
    kAny<VYRAGetNthAircraftModel>, kAny<VYRADisableAIForPlane>, kAny<VYRASetUsersAircraft>,
    kAny<VYRAReinitUsersPlane>, kAny<VYRADrawAircraft>, CreateProbe, DestroyProbe, ProbeTerrain,
    kAny<VYRALoadObject>, kAny<VYRALoadObject>, LoadObjectLater, LoadObjectLater, UnloadObject, DrawObject,
    LookUpObjects, kAny<VYRAFindNavAid>};
// clang-format on

}  // namespace

VYRAMenuID AnyMenu() {
  return gInput.OneIn(3) ? VYRAFindPluginsMenu() : static_cast<VYRAMenuID>(gBook.AnyHandle(Family::menu));
}

const ActionList kSceneActions = {kActions, std::size(kActions)};

}  // namespace calls
