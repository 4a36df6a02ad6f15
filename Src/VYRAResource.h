// The bases of the records that a VYRAResourceList keeps: a record's links in its list.
#pragma once

#include <cstdint>

#include "VYRAChain.h"
#include "VYRARecordPool.h"

template <class T>
class VYRAResourceList;

// What finds a record other than a walk.
template <class T>
struct VYRAResourceAside {
  VYRALinks<T> owned;  // among those of its owner
  VYRALinks<T> alike;  // among those with its key

  static VYRAResourceAside& Of(const T& record) {
    return VYRARecordPool<T, VYRAResourceAside>::AsideOf(record);
  }
  static VYRALinks<T>& OwnedOf(const T& record) { return Of(record).owned; }
  static VYRALinks<T>& AlikeOf(const T& record) { return Of(record).alike; }
};

// The base of every record. A record has an `owner`, and may have a Key() by which its list finds it.
template <class T>
class VYRAResource_t : public VYRAPooled_t<T, VYRAResourceAside<T>> {
 public:
  T* get_next() const { return next; }
  T* get_prev() const { return prev; }
  bool is_dead() const { return dead; }

 private:
  friend class VYRAResourceList<T>;

  T* next = nullptr;
  T* prev = nullptr;
  T* nextDead = nullptr;
  bool dead = false;  // the flags come last: a record's own fields start in the rest of their word
  bool onDeadChain = false;
};

// The base of records that lie above each other: their list is walked from the back as well, and reordered.
// The list of any other records is only added to at the front and walked from there.
template <class T>
class VYRAStackedResource_t : public VYRAResource_t<T> {
 public:
  // Larger in records that were added later.
  std::uint64_t get_serial() const { return serial; }

 private:
  friend class VYRAResourceList<T>;

  bool hidden = false;             // from the list, by the moved anchor
  bool isHiddenTail = false;       // the last of a run of records that the moved anchor hid
  bool followsHiddenTail = false;  // a hidden run still leads to this record
  T* nextHiddenTail = nullptr;
  std::uint64_t serial = 0;
};
