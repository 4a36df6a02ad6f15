// Datarefs, shared data and flight loops.
#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "Actions.h"
#include "Host.h"
#include "Input.h"

namespace calls {

namespace {

// ---- Datarefs -----------------------------------------------------------------------------------------

void Publish(Plugin& self) {
  const int which = gInput.Below(static_cast<int>(std::size(gBook.dataRefs)));
  const std::string name = "fuzz/" + std::to_string(which);
  const Registration* const current = gBook.dataRefs[static_cast<std::size_t>(which)];
  const bool isFree = VYRAFindDataRef(name.c_str()) == nullptr;
  Require(current == nullptr || !current->owner->IsSettled() || !isFree, "a published dataref is not found");
  Registration& r = gBook.Register(Family::dataRef, self);
  r.which = which;
  static constexpr Callbacks kNone = {};
  const Callbacks& given = gInput.OneIn(10) ? kNone : self.callbacks;
  r.handle = Do<VYRARegisterDataAccessor>(
      name.c_str(), gInput.Int(), gInput.OneIn(4) ? 0 : 1, given.readInt, given.writeInt, given.readFloat,
      given.writeFloat, given.readDouble, given.writeDouble, given.readInts, given.writeInts,
      given.readFloats, given.writeFloats, given.readData, given.writeData, &r, &r);
  if (!isFree) return;
  gBook.Added(r);
  gBook.dataRefs[static_cast<std::size_t>(which)] = &r;
}

void Unpublish(Plugin& self) {
  const auto dataRef = static_cast<VYRADataRef>(gBook.AnyHandle(Family::dataRef));
  const Registration* const last = gBook.Last(Family::dataRef, dataRef);
  Do<VYRAUnregisterDataAccessor>(dataRef);
  if (last == nullptr) return;
  Registration*& current = gBook.dataRefs[static_cast<std::size_t>(last->which)];
  if (current != nullptr && current->owner == &self) std::exchange(current, nullptr)->gone = true;
}

void AskDataRef(Plugin&) {
  const auto dataRef = static_cast<VYRADataRef>(gBook.AnyHandle(Family::dataRef));
  const Registration* const last = gBook.Last(Family::dataRef, dataRef);
  const Registration* const current =
      last != nullptr ? gBook.dataRefs[static_cast<std::size_t>(last->which)] : nullptr;
  const bool isGood = VYRAIsDataRefGood(dataRef) != 0;
  Require(isGood || current == nullptr || !current->owner->IsSettled(), "a published dataref is not good");
  if (last != nullptr) VYRAGetDataRefTypes(dataRef);
}

// ---- Shared data: one item of each type, which exist from the first run on ----------------------------

constexpr int kTypes[] = {VYRA_TYPE_INT,         VYRA_TYPE_FLOAT,     VYRA_TYPE_DOUBLE,
                          VYRA_TYPE_FLOAT_ARRAY, VYRA_TYPE_INT_ARRAY, VYRA_TYPE_DATA};

std::string NameOfItem(int which) { return "fuzz/shared/" + std::to_string(kTypes[which]); }

void Share(Plugin& self) {
  Registration& r = gBook.RegisterAgain(Family::subscription, self);
  if (r.gone) r.which = gInput.Below(static_cast<int>(std::size(kTypes)));
  const int type = gInput.OneIn(8) ? gInput.Int() : kTypes[r.which];
  const int result = Do<VYRAShareData>(NameOfItem(r.which).c_str(), type, self.callbacks.changed, &r);
  Require(result == (type == kTypes[r.which] ? 1 : 0),
          "an item is shared as of another type, or refused as of its own");
  if (result != 0) gBook.Added(r);
}

void Unshare(Plugin& self) {
  Registration* const r = gBook.Any(Family::subscription);
  if (r == nullptr) return;
  const int result =
      Do<VYRAUnshareData>(NameOfItem(r->which).c_str(), kTypes[r->which], r->owner->callbacks.changed, r);
  const bool isOwn = r->owner == &self && !r->gone;
  Require(!self.IsSettled() || result == (isOwn ? 1 : 0),
          "a subscription ends that is another's, or not at all");
  if (isOwn) Book::Removed(*r);
}

void WriteItem(Plugin&) {
  const int which = gInput.Below(static_cast<int>(std::size(kTypes)));
  const VYRADataRef item = VYRAFindDataRef(NameOfItem(which).c_str());
  double values[16] = {};
  const int offset = std::min(gInput.Int(), 1 << 20);  // the items stay, with the memory that they have got
  const int count = 1 + gInput.Below(16);
  Call call("write shared");
  for (const Registration* r : gBook.Of(Family::subscription)) {
    if (r->which == which && (which < 3 || (offset >= 0 && offset < 1000))) call.Expect(*r);
  }
  if (which == 0) VYRASetDatai(item, offset);
  if (which == 1) VYRASetDataf(item, gInput.Float());
  if (which == 2) VYRASetDatad(item, gInput.Float());
  if (which == 3) VYRASetDatavf(item, reinterpret_cast<float*>(values), offset, count);
  if (which == 4) VYRASetDatavi(item, reinterpret_cast<int*>(values), offset, count);
  if (which == 5) VYRASetDatab(item, values, offset, count);
  call.Returned();
}

void ReadItem(Plugin&) {
  const int which = gInput.Below(static_cast<int>(std::size(kTypes)));
  const VYRADataRef item = VYRAFindDataRef(NameOfItem(which).c_str());
  int values[16] = {};
  VYRAGetDatavi(item, values, gInput.Int(), gInput.Below(17));
  VYRAGetDatab(item, values, gInput.Int(), gInput.Below(65));
  VYRAGetDatavf(item, nullptr, gInput.Int(), gInput.Int());
}

// ---- Flight loops -------------------------------------------------------------------------------------

void CreateLoop(Plugin& self) {
  Registration& r = gBook.Register(Family::flightLoop, self);
  r.which = gInput.OneIn(12) ? gInput.Int() : gInput.Below(2);
  const bool hasCallback = !gInput.OneIn(16);
  const VYRAFlightLoopParams params = {gInput.OneIn(16) ? 8 : static_cast<int>(sizeof(params)), r.which,
                                       hasCallback ? self.callbacks.flightLoop : nullptr, &r};
  const int cycle = VYRAGetCycleNumber();
  r.handle = Do<VYRACreateFlightLoop>(&params);
  r.lastTime = gHost.time;
  r.lastCycle = cycle;
  r.known = hasCallback && cycle == VYRAGetCycleNumber();
  gBook.Added(r);
}

void RegisterLoop(Plugin& self) {
  Registration& r = gBook.RegisterAgain(Family::flightLoop, self);
  if (!r.gone && r.which != 0) return;
  const bool isNew = r.gone;
  r.which = 0;
  const float interval = gInput.Float();
  const int cycle = VYRAGetCycleNumber();
  Do<VYRARegisterFlightLoopCallback>(self.callbacks.flightLoop, interval, &r);
  r.interval = interval;
  r.lastTime = gHost.time;
  r.lastCycle = cycle;
  gBook.Added(r);
  r.known = isNew && cycle == VYRAGetCycleNumber();
  if (!isNew) r.handle = nullptr;  // known by its callback alone, as there are two
}

void Reschedule(Registration& r, float interval, bool relativeToNow) {
  if (r.gone) return;
  r.interval = interval;
  if (relativeToNow) r.lastTime = gHost.time;
  ++r.touched;
}

// The plugin's own loop that has this handle. A stale one may by now be that of a loop that was registered
// without being given one: what becomes of those is not known then.
Registration* FindOwnLoop(const Plugin& self, VYRAFlightLoopID handle) {
  Registration* const r = gBook.Find(Family::flightLoop, handle);
  if (r != nullptr && r->owner == &self) return r;
  for (Registration* loop : gBook.Of(Family::flightLoop)) {
    if (loop->handle != nullptr || loop->owner != &self) continue;
    loop->known = false;
    loop->most = std::max(loop->most, 2);  // so that it stays unknown
    ++loop->touched;
  }
  return nullptr;
}

void ScheduleLoop(Plugin& self) {
  const auto handle = static_cast<VYRAFlightLoopID>(gBook.AnyHandle(Family::flightLoop));
  Registration* const r = FindOwnLoop(self, handle);
  const float interval = gInput.Float();
  const int relativeToNow = gInput.Below(2);
  Do<VYRAScheduleFlightLoop>(handle, interval, relativeToNow);
  if (r != nullptr) Reschedule(*r, interval, relativeToNow != 0);
}

void SetInterval(Plugin&) {
  Registration* const r = gBook.Any(Family::flightLoop);
  if (r == nullptr) return;
  const float interval = gInput.Float();
  const int relativeToNow = gInput.Below(2);
  Do<VYRASetFlightLoopCallbackInterval>(r->owner->callbacks.flightLoop, interval, relativeToNow, r);
  Reschedule(*r, interval, relativeToNow != 0);
}

void DestroyLoop(Plugin& self) {
  const auto handle = static_cast<VYRAFlightLoopID>(gBook.AnyHandle(Family::flightLoop));
  Registration* const r = FindOwnLoop(self, handle);
  if (r != nullptr) Book::Removed(*r);
  Do<VYRADestroyFlightLoop>(handle);
}

void UnregisterLoop(Plugin&) {
  Registration* const r = gBook.Any(Family::flightLoop);
  if (r == nullptr) return;
  if (!r->gone) Book::Removed(*r);
  Do<VYRAUnregisterFlightLoopCallback>(r->owner->callbacks.flightLoop, r);
}

// clang-format off
const Action kActions[] = {
    Publish, Publish, Publish, Unpublish, AskDataRef, Share, Share, Share, Unshare, WriteItem, WriteItem,
    WriteItem, ReadItem, CreateLoop, CreateLoop, CreateLoop, RegisterLoop, RegisterLoop, RegisterLoop,
    ScheduleLoop, ScheduleLoop, ScheduleLoop, SetInterval, SetInterval, DestroyLoop, UnregisterLoop,
    kAny<VYRAGetDatai>, kAny<VYRAGetDataf>, kAny<VYRAGetDatad>, kAny<VYRAGetDatavi>, kAny<VYRAGetDatavf>,
    kAny<VYRAGetDatab>, kAny<VYRASetDatai>, kAny<VYRASetDataf>, kAny<VYRASetDatad>, kAny<VYRASetDatavi>,
    kAny<VYRASetDatavf>, kAny<VYRASetDatab>};
// clang-format on

}  // namespace

// A handle that the library gave out, or null: it trusts readers and writers.
VYRADataRef IssuedDataRef() {
  const Registration* const r = gBook.Any(Family::dataRef);
  return r != nullptr ? static_cast<VYRADataRef>(const_cast<void*>(r->handle)) : nullptr;
}

const ActionList kDataActions = {kActions, std::size(kActions)};

void MakeItems() {
  for (int which = 0; which < static_cast<int>(std::size(kTypes)); ++which) {
    VYRAShareData(NameOfItem(which).c_str(), kTypes[which], nullptr, nullptr);
  }
}

}  // namespace calls
