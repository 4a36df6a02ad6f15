#include "VYRADataAccessShared.h"

#include <climits>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include "VYRAKeyedRecords.h"
#include "VYRALoaderDispatch.h"
#include "VYRANeverDestroyed.h"
#include "VYRAOwnedRecords.h"
#include "VYRARetiredRecords.h"
#include "VYRAStrings.h"

namespace {

using Item = VYRASharedDataRecord;
using Subscriber = VYRASharedDataSubscriber;

// Every item by its name. None is ever removed.
VYRANeverDestroyed<VYRAKeyedRecords<Item, &Item::Key, &Item::alike>> gItems;

// Every subscriber, by what it is known by, and those of each plugin.
VYRANeverDestroyed<VYRAKeyedRecords<Subscriber, &Subscriber::Key, &Subscriber::alike>> gSubscribers;
VYRANeverDestroyed<VYRAOwnedRecords<Subscriber, &Subscriber::owned>> gSubscribersOf;

VYRARetiredRecords<Subscriber> gRetired;
std::uint64_t gSubscriptions = 0;

void Join(Item& item, VYRADataChanged_f callback, void* refcon) {
  auto* subscriber = new Subscriber;
  subscriber->callback = callback;
  subscriber->refcon = refcon;
  subscriber->owner = gDispatchedPlugin;
  subscriber->serial = ++gSubscriptions;
  subscriber->item = &item;
  item.subscribers.AddLast(subscriber);
  gSubscribers->AddLast(subscriber);
  gSubscribersOf->AddFirst(subscriber->owner, subscriber);
}

void Leave(Subscriber* leaver) {
  leaver->item->subscribers.Remove(leaver);
  gSubscribers->Remove(leaver);
  gSubscribersOf->Remove(leaver->owner, leaver);
  leaver->callback = nullptr;
  gRetired.Retire(std::unique_ptr<Subscriber>(leaver));
}

// Kept: everyone is told, the writer too, and on every write, whether or not the value changed. Plugins
// use a write of the same value as a signal.
void Notify(Item& item) {
  const VYRARetiredRecords<Subscriber>::StPass pass(gRetired);
  StDispatchWalk dispatch(VYRA_CALL_SHARED_DATA);
  const std::uint64_t newest = gSubscriptions;  // those that join meanwhile hear of the next write
  for (const Subscriber* subscriber = item.subscribers.First(); subscriber != nullptr;
       subscriber = subscriber->ofItem.next) {
    if (subscriber->callback == nullptr || subscriber->serial > newest) continue;
    if (!dispatch(subscriber->owner)) continue;
    subscriber->callback(subscriber->refcon);
    dispatch.Ended();
  }
}

template <class Value, int type>
Value ReadScalar(void* refcon) {
  const Item& item = *static_cast<Item*>(refcon);
  Value value{};
  if (item.type == type) std::memcpy(&value, item.buffer.data(), sizeof(value));
  return value;
}

template <class Value, int type>
void WriteScalar(void* refcon, Value value) {
  Item& item = *static_cast<Item*>(refcon);
  if (item.type != type) return;
  std::memcpy(item.buffer.data(), &value, sizeof(value));
  Notify(item);
}

// Makes room for exactly so many bytes, new ones zero; false when memory does not suffice.
bool GrowTo(Item& item, std::size_t size) {
  if (size <= item.buffer.size()) return true;
  try {
    item.buffer.reserve(size);
  } catch (const std::bad_alloc&) {
    return false;
  }
  item.buffer.resize(size);
  return true;
}

// Values is Element, or void for bytes. Offsets and counts that lie outside the item copy nothing.
template <class Element, int type, class Values>
int ReadArray(void* refcon, Values* values, int offset, int max) {
  const Item& item = *static_cast<Item*>(refcon);
  if (item.type != type) return 0;
  const int count = static_cast<int>(item.buffer.size() / sizeof(Element));
  if (values == nullptr) return count;
  if (offset < 0 || offset >= count || max <= 0) return 0;
  const int copied = VYRA_TMIN(max, count - offset);
  std::memcpy(values, item.buffer.data() + static_cast<std::size_t>(offset) * sizeof(Element),
              static_cast<std::size_t>(copied) * sizeof(Element));
  return copied;
}

template <class Element, int type, class Values>
void WriteArray(void* refcon, Values* values, int offset, int count) {
  Item& item = *static_cast<Item*>(refcon);
  if (item.type != type || offset < 0 || count < 0 || (values == nullptr && count > 0)) return;
  const std::int64_t required = (std::int64_t{offset} + count) * std::int64_t{sizeof(Element)};
  if (required > INT_MAX || !GrowTo(item, static_cast<std::size_t>(required))) return;
  if (count > 0) {
    std::memcpy(item.buffer.data() + static_cast<std::size_t>(offset) * sizeof(Element), values,
                static_cast<std::size_t>(count) * sizeof(Element));
  }
  Notify(item);
}

std::size_t InitialSize(int type) {
  switch (type) {
    case VYRA_TYPE_DOUBLE:
      return sizeof(double);
    case VYRA_TYPE_DATA:
      return 1;
    default:
      return 4;  // one int or float, alone or as the first element of an array
  }
}

// The accessor if the item is of its type, else null: a dataref offers no other.
template <class Accessor>
Accessor* ForType(const Item& item, int type, Accessor* accessor) {
  return item.type == type ? accessor : nullptr;
}

void Publish(Item& item) {
  const StActAs host(VYRA_HOST_PLUGIN);
  VYRARegisterDataAccessor(
      item.name.c_str(), item.type, 1, ForType(item, VYRA_TYPE_INT, ReadScalar<int, VYRA_TYPE_INT>),
      ForType(item, VYRA_TYPE_INT, WriteScalar<int, VYRA_TYPE_INT>),
      ForType(item, VYRA_TYPE_FLOAT, ReadScalar<float, VYRA_TYPE_FLOAT>),
      ForType(item, VYRA_TYPE_FLOAT, WriteScalar<float, VYRA_TYPE_FLOAT>),
      ForType(item, VYRA_TYPE_DOUBLE, ReadScalar<double, VYRA_TYPE_DOUBLE>),
      ForType(item, VYRA_TYPE_DOUBLE, WriteScalar<double, VYRA_TYPE_DOUBLE>),
      ForType(item, VYRA_TYPE_INT_ARRAY, ReadArray<int, VYRA_TYPE_INT_ARRAY, int>),
      ForType(item, VYRA_TYPE_INT_ARRAY, WriteArray<int, VYRA_TYPE_INT_ARRAY, int>),
      ForType(item, VYRA_TYPE_FLOAT_ARRAY, ReadArray<float, VYRA_TYPE_FLOAT_ARRAY, float>),
      ForType(item, VYRA_TYPE_FLOAT_ARRAY, WriteArray<float, VYRA_TYPE_FLOAT_ARRAY, float>),
      ForType(item, VYRA_TYPE_DATA, ReadArray<unsigned char, VYRA_TYPE_DATA, void>),
      ForType(item, VYRA_TYPE_DATA, WriteArray<unsigned char, VYRA_TYPE_DATA, void>), &item, &item);
}

Item& CreateItem(const char* name, int type) {
  auto* item = new Item;
  item->name = name;
  item->type = type;
  item->buffer.resize(InitialSize(type));
  gItems->AddLast(item);
  Publish(*item);
  return *item;
}

}  // namespace

int VYRAShareData(const char* name, VYRADataTypeID type, VYRADataChanged_f callback, void* refcon) {
  if (name == nullptr) return 0;
  Item* item = gItems->First(name);
  if (item == nullptr) item = &CreateItem(name, type);
  if (item->type != type) return 0;
  if (callback != nullptr) Join(*item, callback, refcon);
  return 1;
}

int VYRAUnshareData(const char* name, VYRADataTypeID type, VYRADataChanged_f callback, void* refcon) {
  if (name == nullptr || callback == nullptr) return 0;
  Item* item = gItems->First(name);
  if (item == nullptr || item->type != type) return 0;
  Subscriber* leaver = gSubscribers->First({item, callback, refcon, gDispatchedPlugin});
  if (leaver == nullptr) return 0;
  Leave(leaver);
  return 1;
}

void VYRASharedDataForget(VYRAPluginID plugin) {
  while (Subscriber* leaver = gSubscribersOf->First(plugin)) Leave(leaver);
}
