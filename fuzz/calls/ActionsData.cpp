// Datarefs, shared data and flight loops.
#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "Actions.h"
#include "Host.h"
#include "Input.h"

namespace calls {

namespace {

// ---- Datarefs -----------------------------------------------------------------------------------------

// Who publishes the dataref that has this handle, or null; whether the driver knows is left in `isName`.
const Registration* PublisherOf(VYRADataRef dataRef, bool& isName) {
  const Registration* const last = gBook.Last(Family::dataRef, dataRef);
  isName = last != nullptr;
  return isName ? gBook.dataRefs[static_cast<std::size_t>(last->which)] : nullptr;
}

void Publish(Plugin& self) {
  const auto which = static_cast<std::size_t>(gInput.Below(static_cast<int>(std::size(gBook.dataRefs))));
  const std::string name = "fuzz/" + std::to_string(which);
  const Registration* const current = gBook.dataRefs[which];
  const bool isFree = VYRAFindDataRef(name.c_str()) == nullptr;
  Require(current == nullptr || !current->owner->IsSettled() || !isFree, "a published dataref is not found");
  const bool isNobodys = current == nullptr || current->owner->closed;
  Require(!gBook.IsSure() || !isNobodys || isFree, "a dataref is found that nobody publishes");
  Registration& r = gBook.Register(Family::dataRef, self);
  r.which = static_cast<int>(which);
  r.hasAccessors = !gInput.OneIn(10);
  r.types = gInput.Int();
  r.writable = gInput.OneIn(4) ? 0 : 1;
  static constexpr Callbacks kNone = {};
  const Callbacks& given = r.hasAccessors ? self.callbacks : kNone;
  Call call("VYRARegisterDataAccessor");
  r.handle = VYRARegisterDataAccessor(
      name.c_str(), r.types, r.writable, given.readInt, given.writeInt, given.readFloat, given.writeFloat,
      given.readDouble, given.writeDouble, given.readInts, given.writeInts, given.readFloats,
      given.writeFloats, given.readData, given.writeData, &r, reinterpret_cast<char*>(&r) + kWriterOffset);
  call.RequireReport(self, isFree ? nullptr : "Dataref is already registered by someone else.");
  static const void* handles[std::size(gBook.dataRefs)];  // of all runs: a name keeps its handle
  Require(handles[which] == nullptr || handles[which] == r.handle, "a name has another handle than before");
  handles[which] = r.handle;
  if (!isFree) return;
  gBook.Added(r);
  gBook.dataRefs[which] = &r;
}

void Unpublish(Plugin& self) {
  const auto dataRef = static_cast<VYRADataRef>(gBook.AnyHandle(Family::dataRef));
  bool isName = false;
  const Registration* const current = PublisherOf(dataRef, isName);
  const bool isOwn = current != nullptr && current->owner == &self;
  Call call("VYRAUnregisterDataAccessor");
  VYRAUnregisterDataAccessor(dataRef);
  call.RequireReport(self, isOwn    ? nullptr
                           : isName ? "Dataref is not owned by you - you cannot unregsiter."
                                    : "Dataref is illegal and cannot be unregistered.");
  if (isOwn) std::exchange(gBook.dataRefs[static_cast<std::size_t>(current->which)], nullptr)->gone = true;
}

void AskDataRef(Plugin&) {
  const auto dataRef = static_cast<VYRADataRef>(gBook.AnyHandle(Family::dataRef));
  bool isName = false;
  const Registration* const current = PublisherOf(dataRef, isName);
  const bool isGood = VYRAIsDataRefGood(dataRef) != 0;
  if (!gBook.IsSure()) return;
  Require(isGood || current == nullptr || !current->owner->IsSettled(), "a published dataref is not good");
  Require(!isGood || (current != nullptr && !current->owner->closed),
          "a dataref is good that nobody publishes");
  if (current == nullptr || !current->owner->IsSettled()) return;
  Require(VYRAGetDataRefTypes(dataRef) == current->types, "a dataref has other types");
  Require(VYRACanWriteDataRef(dataRef) == current->writable, "a dataref counts wrongly as writable");
}

// Whose accessor is to be called of a dataref, if anybody's.
std::vector<const void*> AccessorOf(VYRADataRef dataRef, bool writes) {
  bool isName = false;
  const Registration* const current = PublisherOf(dataRef, isName);
  const bool isCalled = current != nullptr && current->owner->enabled && current->hasAccessors &&
                        (!writes || current->writable != 0);
  return isCalled ? std::vector<const void*>{current} : std::vector<const void*>();
}

void ReadDataRef(Plugin&) {
  const VYRADataRef dataRef = IssuedDataRef();
  const auto meant = AccessorOf(dataRef, false);
  const int kind = gInput.Below(6);
  const int offset = gInput.Int();
  const int max = gInput.Int();
  Call call("read dataref");
  call.told = {kind, kind < 3 ? 0 : offset, kind < 3 ? 0 : max};
  double value = 0;
  if (kind == 0) value = VYRAGetDatai(dataRef);
  if (kind == 1) value = VYRAGetDataf(dataRef);
  if (kind == 2) value = VYRAGetDatad(dataRef);
  if (kind == 3) value = VYRAGetDatavi(dataRef, nullptr, offset, max);
  if (kind == 4) value = VYRAGetDatavf(dataRef, nullptr, offset, max);
  if (kind == 5) value = VYRAGetDatab(dataRef, nullptr, offset, max);
  if (gBook.IsSure()) call.RequireTurns(meant);
  Require(value == (call.turns.empty() ? 0 : call.turns.back().answer), "a dataref has another value");
}

void WriteDataRef(Plugin&) {
  const VYRADataRef dataRef = IssuedDataRef();
  const auto meant = AccessorOf(dataRef, true);
  const int kind = gInput.Below(6);
  const int value = gInput.Below(99);
  const int count = kind < 3 ? 0 : gInput.Int();
  Call call("write dataref");
  call.told = {10 + kind, value, count};
  if (kind == 0) VYRASetDatai(dataRef, value);
  if (kind == 1) VYRASetDataf(dataRef, static_cast<float>(value));
  if (kind == 2) VYRASetDatad(dataRef, value);
  if (kind == 3) VYRASetDatavi(dataRef, nullptr, value, count);
  if (kind == 4) VYRASetDatavf(dataRef, nullptr, value, count);
  if (kind == 5) VYRASetDatab(dataRef, nullptr, value, count);
  if (gBook.IsSure()) call.RequireTurns(meant);
}

// ---- Shared data: one item of each type, which exist from the first run on ----------------------------

constexpr int kTypes[] = {VYRA_TYPE_INT,         VYRA_TYPE_FLOAT,     VYRA_TYPE_DOUBLE,
                          VYRA_TYPE_FLOAT_ARRAY, VYRA_TYPE_INT_ARRAY, VYRA_TYPE_DATA};

std::string NameOfItem(int which) { return "fuzz/shared/" + std::to_string(kTypes[which]); }

// What the items hold: of all runs, as they are never destroyed. Bytes that nobody wrote are not known.
struct Item {
  std::vector<unsigned char> bytes;
  std::vector<char> known;
};
Item gItems[std::size(kTypes)];

std::size_t ElementOf(int which) { return which == 2 ? 8 : which == 5 ? 1 : 4; }

void Note(int which, std::size_t offset, std::size_t size, const void* values) {
  Item& item = gItems[which];
  const std::size_t end = std::max({offset + size, item.bytes.size(), ElementOf(which)});
  item.bytes.resize(end);
  item.known.resize(end);
  if (size > 0) std::memcpy(&item.bytes[offset], values, size);
  std::fill_n(item.known.begin() + static_cast<std::ptrdiff_t>(offset), size, char{1});
}

void RequireBytes(const Item& item, std::size_t offset, std::size_t size, const void* values) {
  const auto* const bytes = static_cast<const unsigned char*>(values);
  for (std::size_t i = 0; i < size; ++i) {
    Require(item.known[offset + i] == 0 || bytes[i] == item.bytes[offset + i], "an item has another value");
  }
}

void Share(Plugin& self) {
  Registration& r = gBook.RegisterAgain(Family::subscription, self);
  if (r.gone) r.which = gInput.Below(static_cast<int>(std::size(kTypes)));
  const int type = gInput.OneIn(8) ? gInput.Int() : kTypes[r.which];
  const int result = Do<VYRAShareData>(NameOfItem(r.which).c_str(), type, self.callbacks.changed, &r);
  Require(result == (type == kTypes[r.which] ? 1 : 0),
          "an item is shared as of another type, or refused as of its own");
  if (result == 0) return;
  gBook.Added(r);
  gBook.subscribers[r.which].push_back(&r);
}

void Leave(const Plugin& self, Registration& r) {
  const int result =
      Do<VYRAUnshareData>(NameOfItem(r.which).c_str(), kTypes[r.which], r.owner->callbacks.changed, &r);
  const bool isOwn = r.owner == &self && !r.gone;
  Require(!self.IsSettled() || result == (isOwn ? 1 : 0),
          "a subscription ends that is another's, or not at all");
  if (!isOwn) return;
  Book::Removed(r);
  auto& subscribers = gBook.subscribers[r.which];
  subscribers.erase(std::find(subscribers.begin(), subscribers.end(), &r));
}

void Unshare(Plugin& self) {
  if (gInput.OneIn(3)) {
    for (Registration* r : gBook.OwnOf(Family::subscription, self)) Leave(self, *r);
  } else if (Registration* const r = gBook.Any(Family::subscription)) {
    Leave(self, *r);
  }
}

void WriteItem(Plugin&) {
  const int which = gInput.Below(static_cast<int>(std::size(kTypes)));
  const VYRADataRef item = VYRAFindDataRef(NameOfItem(which).c_str());
  // The items stay, with the memory that they have got.
  const int offset = gInput.OneIn(30) ? std::min(gInput.Int(), 1 << 16) : gInput.Below(12) - 1;
  const int count = 1 + gInput.Below(8);
  alignas(double) unsigned char values[64];
  for (unsigned char& value : values) value = static_cast<unsigned char>(gInput.Byte());
  const bool isArray = which > 2;
  const bool isTaken = !isArray || offset >= 0;
  const std::size_t element = ElementOf(which);
  if (isTaken && isArray) {
    Note(which, static_cast<std::size_t>(offset) * element, static_cast<std::size_t>(count) * element,
         values);
  }
  if (!isArray) Note(which, 0, element, values);
  std::vector<const void*> meant;
  for (const Registration* r : gBook.subscribers[which]) {
    if (isTaken && r->owner->enabled) meant.push_back(r);
  }
  Call call("write shared");
  for (const void* who : meant) call.Expect(*static_cast<const Registration*>(who));
  int whole = 0;
  float single = 0;
  double both = 0;
  std::memcpy(&whole, values, sizeof(whole));
  std::memcpy(&single, values, sizeof(single));
  std::memcpy(&both, values, sizeof(both));
  if (which == 0) VYRASetDatai(item, whole);
  if (which == 1) VYRASetDataf(item, single);
  if (which == 2) VYRASetDatad(item, both);
  if (which == 3) VYRASetDatavf(item, reinterpret_cast<float*>(values), offset, count);
  if (which == 4) VYRASetDatavi(item, reinterpret_cast<int*>(values), offset, count);
  if (which == 5) VYRASetDatab(item, values, offset, count);
  call.Returned();
  call.RequireTurns(meant);
}

void ReadItem(Plugin&) { CheckItem(gInput.Below(static_cast<int>(std::size(kTypes)))); }

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
  r.which = 0;
  const float interval = gInput.Float();
  const int cycle = VYRAGetCycleNumber();
  Do<VYRARegisterFlightLoopCallback>(self.callbacks.flightLoop, interval, &r);
  const bool isNew = r.gone;  // now: what the host did when it was asked for the time may have registered it
  r.interval = interval;
  r.lastTime = gHost.time;
  r.lastCycle = cycle;
  gBook.Added(r);
  r.known = isNew && cycle == VYRAGetCycleNumber();
  r.handle =
      nullptr;  // known by its callback alone; that of an earlier life is another's by now, or nobody's
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
    ReadDataRef, ReadDataRef, ReadDataRef, WriteDataRef, WriteDataRef, WriteDataRef, ReadItem};
// clang-format on

}  // namespace

// A handle that the library gave out, or null: it trusts readers and writers.
VYRADataRef IssuedDataRef() {
  const Registration* const r = gBook.Any(Family::dataRef);
  return r != nullptr ? static_cast<VYRADataRef>(const_cast<void*>(r->handle)) : nullptr;
}

void CheckItem(int which) {
  const VYRADataRef dataRef = VYRAFindDataRef(NameOfItem(which).c_str());
  const Item& item = gItems[which];
  const std::size_t element = ElementOf(which);
  if (which < 3) {
    const int whole = VYRAGetDatai(dataRef);
    const float single = VYRAGetDataf(dataRef);
    const double both = VYRAGetDatad(dataRef);
    if (item.bytes.empty()) return;
    const void* const values[] = {&whole, &single, &both};
    RequireBytes(item, 0, element, values[which]);
    Require((which == 0 || whole == 0) && (which == 1 || single == 0) && (which == 2 || both == 0),
            "an item has a value of another type");
    return;
  }
  alignas(double) unsigned char values[64] = {};
  const int offset = gInput.OneIn(8) ? gInput.Int() : gInput.Below(12);
  const int max = gInput.Below(9);
  const auto read = [&](void* place) {
    if (which == 3) return VYRAGetDatavf(dataRef, static_cast<float*>(place), offset, max);
    if (which == 4) return VYRAGetDatavi(dataRef, static_cast<int*>(place), offset, max);
    return VYRAGetDatab(dataRef, place, offset, max);
  };
  const int count = static_cast<int>(std::max(item.bytes.size(), element) / element);
  Require(read(nullptr) == count, "an item has more elements, or fewer");
  const int meant = offset >= 0 && offset < count ? std::min(max, count - offset) : 0;
  Require(read(values) == meant, "more is read of an item, or less");
  if (!item.bytes.empty())
    RequireBytes(item, static_cast<std::size_t>(std::max(offset, 0)) * element * (meant > 0 ? 1 : 0),
                 static_cast<std::size_t>(meant) * element, values);
}

const ActionList kDataActions = {kActions, std::size(kActions)};

void MakeItems() {
  for (int which = 0; which < static_cast<int>(std::size(kTypes)); ++which) {
    VYRAShareData(NameOfItem(which).c_str(), kTypes[which], nullptr, nullptr);
  }
}

}  // namespace calls
