// Planes, terrain probes and scenery objects.
#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Actions.h"
#include "Host.h"
#include "Input.h"
#include "Menus.h"
#include "VYRANavigation.h"

namespace calls {

namespace {

// ---- Planes -------------------------------------------------------------------------------------------

bool Holds(const Plugin& self) {
  return gBook.planes.holder != nullptr && gBook.planes.holder->owner == &self;
}

void AcquirePlanes(Plugin& self) {
  Planes& planes = gBook.planes;
  planes.CheckHolder();
  Registration& r = gBook.Register(Family::planesWait, self);
  char model[] = "Aircraft/wing.acf";
  char* models[] = {model, model, nullptr};
  gBook.Added(r);
  const bool waits = !gInput.OneIn(4);
  const bool wishes = gInput.OneIn(2);
  const bool isFree = planes.known && planes.holder == nullptr;
  const bool isOwn = Holds(self);
  const int result =
      Do<VYRAAcquirePlanes>(wishes ? models : nullptr, waits ? self.callbacks.planesReturned : nullptr, &r);
  if (planes.known) Require(result == (isFree || isOwn ? 1 : 0), "the planes are taken, or not to be had");
  if (result != 0 || !waits) r.count = 0;
  if (result == 0 && waits) planes.queue.emplace_back(++planes.requests, &r);
  if (result == 0 || (planes.known && isOwn)) return;
  planes.known = planes.known || isFree;
  planes.Take(r);
  if (wishes) planes.wishes = {{0, model}, {1, model}};
}

void ReleasePlanes(Plugin& self) {
  Planes& planes = gBook.planes;
  planes.CheckHolder();
  const bool isHolder = Holds(self);
  const int last = planes.requests;
  std::vector<const void*> meant;
  for (const auto& [number, request] : planes.queue) {
    if (isHolder && request->owner->enabled) meant.push_back(request);
  }
  std::vector<int> off(std::begin(Planes::off), std::end(Planes::off));
  if (isHolder) {
    planes.holder = nullptr;
    for (int plane = 1; plane < std::min<int>(Planes::most, std::size(Planes::off)); ++plane)
      off[static_cast<std::size_t>(plane)] = 0;
  }
  Call call("VYRAReleasePlanes");
  try {
    VYRAReleasePlanes();
  } catch (...) {
    planes.queueKnown = false;  // who may not be called does not wait any more, who comes behind does
    throw;
  }
  if (!planes.known) return;
  // Who is still to be told of an earlier release is none of this one's business.
  planes.queueKnown = planes.queueKnown && planes.telling == 0;
  if (planes.queueKnown) call.RequireTurns(meant);
  if (!isHolder || planes.telling > 0) return;
  std::erase_if(planes.queue, [&](const auto& entry) { return entry.first <= last; });
  planes.queueKnown = true;
  if (!call.IsDisturbed())
    Require(std::equal(off.begin(), off.end(), Planes::off), "the planes fly themselves, or do not");
}

void LimitPlanes(Plugin& self) {
  gBook.planes.CheckHolder();
  const int limit = gInput.OneIn(4) ? gInput.Int() : gInput.Below(5);
  if (Holds(self)) gBook.planes.limit = limit;
  Do<VYRASetActiveAircraftCount>(limit);
}

void WishForModel(Plugin& self) {
  Planes& planes = gBook.planes;
  planes.CheckHolder();
  const int plane = gInput.OneIn(8) ? gInput.Int() : gInput.Below(4);
  const char* const path = gInput.Text();
  const bool isTaken = Holds(self) && path != nullptr && plane >= 0 && std::string(path).size() < 4096;
  if (isTaken) {
    planes.wishes[plane] = path;
    if (*path == '\0') planes.wishes.erase(plane);
  }
  Call call("VYRASetAircraftModel");
  VYRASetAircraftModel(plane, path);
  const bool loads = isTaken && plane < Planes::most;
  if (planes.known && gBook.IsSure())
    call.RequireServices(loads ? Services{{kSetAircraftModel, plane, 0, 0}} : Services());
}

void CountPlanes(Plugin&) {
  Planes& planes = gBook.planes;
  planes.CheckHolder();
  int total = -5;
  int active = -5;
  Call call("VYRACountAircraft");
  VYRACountAircraft(&total, &active, nullptr);
  if (call.IsDisturbed() || !planes.known || planes.holder == nullptr) return;
  Require(total == gHost.aircraft, "there are more planes, or fewer");
  Require(active == (planes.limit == -1 ? total : std::min(planes.limit, total)), "more planes are active");
}

void DisableAI(Plugin&) {
  const int plane = gInput.Below(24);
  Do<VYRADisableAIForPlane>(plane);
  Require(Planes::off[plane] == 1, "a plane still flies itself");
}

// ---- Terrain and objects ------------------------------------------------------------------------------

// The numbers of the host's probes that nobody has, as far as the driver knows: of all runs, as the library
// keeps them.
std::set<int> gFreeProbes;
bool gFreeProbesKnown = true;

void CreateProbe(Plugin& self) {
  Registration& r = gBook.Register(Family::probe, self);
  r.which = gInput.OneIn(4) ? gInput.Int() : 0;
  r.before = -1;
  Call call("VYRACreateProbe");
  r.handle = VYRACreateProbe(r.which);
  gBook.Added(r);
  // One that was destroyed is used again, the first of them.
  gFreeProbesKnown = gFreeProbesKnown && gBook.IsSure();
  if (!gFreeProbesKnown) return;
  if (call.services.empty()) {
    if (!gFreeProbes.empty()) r.before = *gFreeProbes.begin();
    gFreeProbes.erase(r.before);
  } else {
    Require(call.IsDisturbed() || gFreeProbes.empty(), "the host is asked for a probe, though one is free");
    r.before = call.services.front()[1];
  }
}

void DestroyProbe(Plugin&) {
  const VYRAProbeRef probe = AnyHandle<VYRAProbeRef>(Family::probe);
  Registration* const r = gBook.Find(Family::probe, probe);
  if (r != nullptr && r->owner->IsSettled()) {
    Book::Removed(*r);
    if (r->before >= 0) gFreeProbes.insert(r->before);
  }
  Do<VYRADestroyProbe>(probe);
}

void ProbeTerrain(Plugin&) {
  const VYRAProbeRef probe = AnyHandle<VYRAProbeRef>(Family::probe);
  const Registration* const r = gBook.Find(Family::probe, probe);
  const bool isThere = r != nullptr;
  VYRAProbeInfo info = {gInput.OneIn(6) ? 40 + gInput.Below(8) : 44, {}, {}, {}, 0};
  const bool hasInfo = !gInput.OneIn(8);
  Call call("VYRAProbeTerrainXYZ");
  const int result = VYRAProbeTerrainXYZ(probe, gInput.Float(), 0.0F, 0.0F, hasInfo ? &info : nullptr);
  if (isThere && !r->owner->IsSettled()) return;
  const bool isAsked = isThere && r->which == 0 && info.size == 44 && hasInfo;
  Require(isAsked || result == VYRA_PROBE_ERROR, "a probe answers that should not");
  if (!isAsked || call.IsDisturbed()) return;
  Require(result == (gHost.probeHits != 0 ? VYRA_PROBE_HIT : VYRA_PROBE_MISSED), "a probe answers wrongly");
  Require(call.services.size() == 1, "the host is not asked for the terrain");
  if (r->before >= 0) Require(call.services[0][1] == r->before, "another of the host's probes is asked");
}

VYRAObjectRef AnyObject() {
  return gInput.OneIn(8) ? gBook.AnyHandle(Family::probe) : &gInput.OneOf(gHost.loads);
}

void LoadObject(Plugin& self) {
  const VYRAObjectRef object = Do<VYRALoadObject>(gInput.Text());
  if (object != nullptr) self.objects.insert(object);
}

void LoadObjectLater(Plugin& self) {
  if (gInput.OneIn(3)) LoadObjectLater(self);
  Registration& r = gBook.Register(Family::objectLoad, self);
  gBook.Added(r);  // first: it may be there at once
  const char* const path = gInput.Text();
  r.which = path == nullptr && gInput.OneIn(2) ? 0 : 1;
  gHost.loading = path != nullptr ? &r : nullptr;
  Do<VYRALoadObjectAsync>(path, r.which != 0 ? self.callbacks.objectReady : nullptr, &r);
}

constexpr const char* kUnknownObject = "Unknown object for VYRAUnloadObject";

void UnloadObject(Plugin& self) {
  const VYRAObjectRef object = AnyObject();
  const auto found = self.objects.find(object);
  const bool isOwn = found != self.objects.end();
  const bool isKnown = self.IsSettled();
  if (isOwn) self.objects.erase(found);
  Call call("VYRAUnloadObject");
  VYRAUnloadObject(object);
  if (!isKnown) return;
  call.RequireReport(self, isOwn ? nullptr : kUnknownObject);
  call.RequireServices(isOwn ? Services{{kUnloadObject, 0, 0, 0}} : Services());
}

void DrawObject(Plugin& self) {
  VYRADrawInfo places[3];
  for (int i = 0; i < 3; ++i) {
    const int size = gInput.OneIn(12) ? gInput.Int() : static_cast<int>(sizeof(places[i]));
    places[i] = {size, static_cast<float>(i), 0, 0, 1, 2, 3};
  }
  const VYRAObjectRef object = AnyObject();
  const int count = std::min(gInput.Int(), 3);
  const bool hasPlaces = !gInput.OneIn(8);
  const int wanted = hasPlaces ? std::max(count, 0) : 0;
  const char* report =
      self.objects.contains(object) ? nullptr : "Illegal object, or object not owned by this plugin.";
  for (int i = 0; i < wanted && report == nullptr; ++i) {
    if (places[i].size != 28) report = "Struct size mismatch for VYRADrawObjects";
  }
  Services meant;
  const bool hears = self.module != nullptr && self.hasErrorCallback;
  for (int i = 0; i < wanted && !(hears && report != nullptr); ++i) meant.push_back({kDrawObject, i, 0, 0});
  const bool isKnown = self.IsSettled();
  Call call("VYRADrawObjects");
  VYRADrawObjects(object, count, hasPlaces ? places : nullptr, 0, 1);
  if (!isKnown) return;
  call.RequireReport(self, report);
  call.RequireServices(meant);
}

void LookUpObjects(Plugin& self) {
  Registration& r = gBook.Register(Family::enumeration, self);
  Do<VYRALookupObjects>(gInput.Text(), gInput.Float(), gInput.Float(), self.callbacks.found, &r);
}

// clang-format off
const Action kActions[] = {
    AcquirePlanes, AcquirePlanes, AcquirePlanes, ReleasePlanes, ReleasePlanes, WishForModel, LimitPlanes, CountPlanes,
    kAny<VYRAGetNthAircraftModel>, DisableAI, kAny<VYRASetUsersAircraft>, kAny<VYRAReinitUsersPlane>,
    kAny<VYRADrawAircraft>, CreateProbe, DestroyProbe, ProbeTerrain, LoadObject, LoadObject, LoadObjectLater,
    LoadObjectLater, UnloadObject, DrawObject, LookUpObjects, kAny<VYRAFindNavAid>};
// clang-format on

}  // namespace

const ActionList kSceneActions = {kActions, std::size(kActions)};

}  // namespace calls

// The datarefs that switch the host's own pilots off.
void calls::MakeSwitches() {
  for (int plane = 0; plane < static_cast<int>(std::size(Planes::off)); ++plane) {
    const std::string name = "sim/private/net_disables/ai_loc[" + std::to_string(plane) + "]";
    const auto write = [](void* off, int value) { *static_cast<int*>(off) = value; };
    if (VYRAFindDataRef(name.c_str()) != nullptr) return;
    VYRARegisterDataAccessor(name.c_str(), VYRA_TYPE_INT, 1, nullptr, write, nullptr, nullptr, nullptr,
                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                             &Planes::off[plane]);
  }
}

void calls::FreeProbesOf(const Plugin& self) {
  for (Registration* r : gBook.Of(Family::probe)) {
    if (r->owner == &self && !r->gone && r->before >= 0) gFreeProbes.insert(std::exchange(r->before, -1));
  }
}
