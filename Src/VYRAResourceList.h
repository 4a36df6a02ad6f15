// The list of callbacks that the library walks while it calls plugins. A callback may remove itself or any
// other record, or reorder the list, while it is being walked: during a walk a removal only marks the record
// dead, and the end of any walk frees the dead ones; walks in progress are moved off a record before it is
// freed or relinked. Records are made by the subsystem and owned by the list from Add onward.
//
// Beside the list stands what finds a record without a walk: by its owner, by its key, and by its handle,
// which is its address. Dead records are found as well, until they are freed.
#pragma once

#include <cstdint>
#include <limits>

#include "VYRAOwnedRecords.h"
#include "VYRAResource.h"
#include "VYRAResourceCursor.h"
#include "VYRAResourceHold.h"
#include "VYRAResourceKeys.h"

template <class T>
class VYRAResourceWalk;

// How many walks of a list have begun and not ended. Some are meant to have no end, so it stops at the
// largest number rather than overflow.
struct VYRAIterationDepth {
  void Raise() {
    if (value < std::numeric_limits<int>::max()) ++value;
  }
  void Lower() {
    if (value > 0) --value;
  }

  int value = 0;
};

template <class T>
class VYRAResourceList {
 public:
  VYRAResourceList() = default;
  VYRAResourceList(const VYRAResourceList&) = delete;
  VYRAResourceList& operator=(const VYRAResourceList&) = delete;

  // Links a record in front of where the head stands now.
  void Add(T* item) {
    if constexpr (Cursor::IsStack()) {
      item->serial = ++newestSerial;
      for (Cursor* cursor = innermostCursor; cursor != nullptr; cursor = cursor->outer) cursor->BeforeAdd();
    }
    VYRAAddResource(item);
    owned.AddFirst(item->owner, item);
    keys.AddFirst(item);
  }

  // The record that a handle, which may be any pointer, is good for, or null. The hidden are not found.
  static T* Get(T* handle) {
    if (handle == nullptr || !T::Pool::Holds(handle)) return nullptr;
    if constexpr (Cursor::IsStack()) {
      if (handle->hidden) return nullptr;
    }
    return handle;
  }

  // The first record of the list with a key, or null, and the next one with the key of a record.
  template <class Key>
  T* FirstLike(const Key& key) {
    return keys.First(key);
  }
  static T* NextLike(T* item) { return VYRAResourceKeys<T>::Next(item); }

  // Frees a record, or marks it dead while a walk is in progress.
  void Remove(T* item) {
    VYRAKillResource(item, depth.value != 0);
    if (depth.value != 0) needsClean = true;
  }

  // Removes every record that this plugin made, in a walk of its own. The hidden ones go too.
  template <class Plugin>
  void RemoveAllOf(Plugin owner) {
    BeginIterate();
    T* next = nullptr;
    for (T* item = owned.First(owner); item != nullptr; item = next) {
      next = owned.Next(item);
      if constexpr (Cursor::IsStack()) {
        if (item->hidden) {
          // Those on the chain of dead ones are freed from there.
          if (!item->onDeadChain) VYRAKillResource(item, false);
          continue;
        }
      }
      Remove(item);
    }
    EndIterate();
  }

  // Relinks a record at the front, at once, also during a walk.
  //
  // Kept: this revives a dead record, but leaves it on the chain of dead ones, so that the next end of a
  // walk frees it nevertheless; the dead records behind it on that chain stay linked and are never freed.
  void MoveToFront(T* item) {
    static_assert(Cursor::IsStack());
    for (Cursor* cursor = innermostCursor; cursor != nullptr; cursor = cursor->outer) {
      cursor->BeforeMove(item);
    }
    VYRARemoveResource(item);
    VYRAAddResource(item);
    for (Cursor* cursor = innermostCursor; cursor != nullptr; cursor = cursor->outer) cursor->AfterMove(item);
  }

  // Begins a walk and returns the first record. Walks that call plugins use VYRAResourceWalk.
  T* BeginIterate() {
    depth.Raise();
    while (head != nullptr && head->prev != nullptr) head = head->prev;
    return head;
  }

  // Begins a walk from the back, to be stepped with get_prev, and returns the last record.
  //
  // Kept: the head stays on the last record until the next BeginIterate. A record that is added in between
  // hides all records before the last one from the list; VYRAHost.h tells hosts how never to get there.
  T* BeginReverseIterate() {
    static_assert(Cursor::IsStack());
    depth.Raise();
    while (head != nullptr && head->next != nullptr) head = head->next;
    return head;
  }

  // Ends a walk.
  //
  // Kept: dead records are freed at the end of any walk, an inner one too. Registrations rely on it: after
  // an unregistration returns, the record is gone.
  void EndIterate() {
    depth.Lower();
    if (needsClean) Clean();
  }

  void Clean() {
    VYRACleanResources();
    needsClean = false;
  }

  // Holds on to a record of the list, or to none.
  VYRAResourceHold<T> Hold(T* item) { return VYRAResourceHold<T>(innermostHold, item); }

  int IterationDepth() const { return depth.value; }

 private:
  friend class VYRAResourceWalk<T>;
  using Cursor = VYRAResourceCursor<T>;

  void VYRAAddResource(T* item) {
    if constexpr (Cursor::IsStack()) {
      if (head != nullptr && head->prev != nullptr) HideUpTo(head->prev);
    }
    item->prev = nullptr;
    item->next = head;
    if (head != nullptr) head->prev = item;
    item->dead = false;
    if constexpr (Cursor::IsStack()) item->hidden = false;
    CutDeadChainBehind(item);
    head = item;
  }

  void VYRAKillResource(T* item, bool deferred) {
    if (!deferred) {
      for (Cursor* cursor = innermostCursor; cursor != nullptr; cursor = cursor->outer) cursor->Forget(item);
      for (auto* hold = innermostHold; hold != nullptr; hold = hold->outer) hold->Forget(item);
      VYRARemoveResource(item);
      owned.Remove(item->owner, item);
      keys.Remove(item);
      delete item;
      return;
    }
    if (item->dead) return;
    item->dead = true;
    if (item->onDeadChain) return;
    item->onDeadChain = true;
    item->nextDead = deadHead;
    deadHead = item;
  }

  // Unlinks a record without freeing it.
  void VYRARemoveResource(T* item) {
    for (Cursor* cursor = innermostCursor; cursor != nullptr; cursor = cursor->outer) {
      cursor->BeforeUnlink(item);
    }
    if (head == item) {
      head = item->next;
      if constexpr (Cursor::IsStack()) {
        if (head == nullptr && item->prev != nullptr) HideUpTo(item->prev);
      }
    }
    if (item->prev != nullptr) item->prev->next = item->next;
    if (item->next != nullptr && item->next->prev == item) item->next->prev = item->prev;
    if constexpr (Cursor::IsStack()) UnlinkFromHidden(item);
  }

  void VYRACleanResources() {
    while (deadHead != nullptr) {
      T* item = deadHead;
      deadHead = item->nextDead;
      VYRAKillResource(item, false);
    }
  }

  // The records behind one on the chain of dead ones leave the chain.
  void CutDeadChainBehind(T* item) {
    T* rest = item->nextDead;
    item->nextDead = nullptr;
    while (rest != nullptr) {
      T* following = rest->nextDead;
      rest->onDeadChain = false;
      rest->nextDead = nullptr;
      rest = following;
    }
  }

  // The hidden records stand in runs, each reached from its last one, the tail, by get_prev. A tail still
  // names the record that used to follow it, as a walk inside the run goes on there, until that record is
  // unlinked.

  void HideUpTo(T* tail) {
    for (T* item = tail; item != nullptr; item = item->prev) item->hidden = true;
    tail->isHiddenTail = true;
    tail->nextHiddenTail = hiddenTails;
    hiddenTails = tail;
    if (tail->next != nullptr) tail->next->followsHiddenTail = true;
  }

  // Mends the runs for a record that is being unlinked: those that lead to it, and its own.
  void UnlinkFromHidden(T* item) {
    if (item->followsHiddenTail) {
      item->followsHiddenTail = false;
      for (T* tail = hiddenTails; tail != nullptr; tail = tail->nextHiddenTail) {
        if (tail->next == item) tail->next = item->next;
      }
      if (item->next != nullptr) item->next->followsHiddenTail = true;
    }
    if (!item->isHiddenTail) return;
    T** link = &hiddenTails;
    while (*link != nullptr && *link != item) link = &(*link)->nextHiddenTail;
    if (*link != nullptr) TakeTailOff(link);
  }

  // The record before a tail becomes its run's tail; without one the run ends.
  static void TakeTailOff(T** link) {
    T* const tail = *link;
    T* const before = tail->prev;
    *link = before != nullptr ? before : tail->nextHiddenTail;
    if (before != nullptr) {
      before->isHiddenTail = true;
      before->nextHiddenTail = tail->nextHiddenTail;
    }
    tail->isHiddenTail = false;
    tail->nextHiddenTail = nullptr;
  }

  T* head = nullptr;      // an anchor into the chain: the first record, or after a reverse begin the last
  T* deadHead = nullptr;  // dead records that wait to be freed
  VYRAIterationDepth depth;
  bool needsClean = false;
  Cursor* innermostCursor = nullptr;             // of the innermost walk in progress
  VYRAResourceHold<T>* innermostHold = nullptr;  // the latest
  T* hiddenTails = nullptr;                      // the runs that the moved anchor hid
  std::uint64_t newestSerial = 0;                // of the record that was added last
  VYRAOwnedRecords<T, &VYRAResourceAside<T>::OwnedOf> owned;
  [[no_unique_address]] VYRAResourceKeys<T> keys;
};
