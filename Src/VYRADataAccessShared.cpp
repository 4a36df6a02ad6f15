#include "VYRADataAccessShared.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "VYRALoaderDispatch.h"
#include "VYRAStrings.h"

std::vector<std::unique_ptr<VYRASharedDataRecord>> gSharedData;

namespace {

using Item = VYRASharedDataRecord;
using Subscriber = VYRASharedDataSubscriber;

// While an item notifies, its subscribers are walked in place: one that leaves is only struck out, and the
// list is tidied when the last notification ends.
class StNotifying {
 public:
  explicit StNotifying(Item& notifyingItem) : item(notifyingItem) { ++item.notifying; }
  ~StNotifying() {
    if (--item.notifying > 0) return;
    std::erase_if(item.subscribers, [](const Subscriber& s) { return s.callback == nullptr; });
  }
  StNotifying(const StNotifying&) = delete;
  StNotifying& operator=(const StNotifying&) = delete;

 private:
  Item& item;
};

void Leave(Item& item, std::vector<Subscriber>::iterator leaver) {
  if (item.notifying > 0) {
    leaver->callback = nullptr;
  } else {
    item.subscribers.erase(leaver);
  }
}

// Kept: everyone is told, the writer too, and on every write, whether or not the value changed. Plugins
// use a write of the same value as a signal.
void Notify(Item& item) {
  const StNotifying notifying(item);
  StDispatchWalk dispatch(VYRA_CALL_SHARED_DATA);
  const std::size_t count = item.subscribers.size();  // those that join meanwhile hear of the next write
  for (std::size_t i = 0; i < count; ++i) {
    const Subscriber subscriber = item.subscribers[i];
    if (subscriber.callback == nullptr || !dispatch(subscriber.owner)) continue;
    subscriber.callback(subscriber.refcon);
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

Item* FindItem(std::string_view name) {
  const auto found = std::find_if(gSharedData.begin(), gSharedData.end(),
                                  [&](const auto& item) { return item->name == name; });
  return found != gSharedData.end() ? found->get() : nullptr;
}

Item& CreateItem(const char* name, int type) {
  auto created = std::make_unique<Item>();
  created->name = name;
  created->type = type;
  created->buffer.resize(InitialSize(type));
  Item& item = *gSharedData.emplace_back(std::move(created));
  Publish(item);
  return item;
}

}  // namespace

int VYRAShareData(const char* name, VYRADataTypeID type, VYRADataChanged_f callback, void* refcon) {
  if (name == nullptr) return 0;
  Item* item = FindItem(name);
  if (item == nullptr) item = &CreateItem(name, type);
  if (item->type != type) return 0;
  if (callback != nullptr) item->subscribers.push_back({callback, refcon, gDispatchedPlugin});
  return 1;
}

int VYRAUnshareData(const char* name, VYRADataTypeID type, VYRADataChanged_f callback, void* refcon) {
  if (name == nullptr || callback == nullptr) return 0;
  Item* item = FindItem(name);
  if (item == nullptr || item->type != type) return 0;
  const auto found = std::find(item->subscribers.begin(), item->subscribers.end(),
                               Subscriber{callback, refcon, gDispatchedPlugin});
  if (found == item->subscribers.end()) return 0;
  Leave(*item, found);
  return 1;
}

void VYRASharedDataForget(VYRAPluginID plugin) {
  for (const auto& item : gSharedData) {
    for (std::size_t i = item->subscribers.size(); i-- > 0;) {
      if (item->subscribers[i].owner == plugin) {
        Leave(*item, item->subscribers.begin() + static_cast<std::ptrdiff_t>(i));
      }
    }
  }
}
