// The list of callbacks that the library walks while it calls plugins. A callback may remove itself or any
// other record, or reorder the list, while it is being walked: during a walk a removal only marks the record
// dead, and the end of any walk frees the dead ones; walks in progress are moved off a record before it is
// freed or relinked. Records are made by the subsystem and owned by the list from Add onward.
#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "VYRARecordPool.h"

template <class T>
class VYRAResourceList;
template <class T>
class VYRAResourceWalk;

// The base of every record of a list.
template <class T>
class VYRAResource_t : public VYRAPooled_t<T> {
 public:
  T* get_next() const { return next; }
  T* get_prev() const { return prev; }
  bool is_dead() const { return dead; }

 private:
  friend class VYRAResourceList<T>;

  T* next = nullptr;
  T* prev = nullptr;
  T* nextDead = nullptr;
  T* nextDropped = nullptr;
  bool dead = false;  // last, with onDeadChain: a record's own fields start in the rest of their word
  bool onDeadChain = false;
};

template <class T>
class VYRAResourceList {
 public:
  constexpr VYRAResourceList() = default;
  VYRAResourceList(const VYRAResourceList&) = delete;
  VYRAResourceList& operator=(const VYRAResourceList&) = delete;

  // Links a record in front of where the head stands now.
  void Add(T* item) { VYRAAddResource(item); }

  // Frees a record, or marks it dead while a walk is in progress.
  void Remove(T* item) {
    VYRAKillResource(item, iterationDepth != 0);
    if (iterationDepth != 0) needsClean = true;
  }

  // Relinks a record at the front, at once, also during a walk.
  //
  // Kept: this revives a dead record, but leaves it on the chain of dead ones, so that the next end of a
  // walk frees it nevertheless; the dead records behind it on that chain stay linked and are never freed.
  void MoveToFront(T* item) {
    for (VYRAResourceWalk<T>* walk = walks; walk != nullptr; walk = walk->outer) walk->BeforeMove(item);
    VYRARemoveResource(item);
    VYRAAddResource(item);
    for (VYRAResourceWalk<T>* walk = walks; walk != nullptr; walk = walk->outer) walk->AfterMove(item);
  }

  // Begins a walk and returns the first record. Walks that call plugins use VYRAResourceWalk.
  T* BeginIterate() {
    ++iterationDepth;
    while (head != nullptr && head->prev != nullptr) head = head->prev;
    return head;
  }

  // Begins a walk from the back, to be stepped with get_prev, and returns the last record.
  //
  // Kept: the head stays on the last record until the next BeginIterate. A record that is added in between
  // hides all records before the last one from the list; VYRAHost.h tells hosts how never to get there.
  T* BeginReverseIterate() {
    ++iterationDepth;
    while (head != nullptr && head->next != nullptr) head = head->next;
    return head;
  }

  // Ends a walk.
  //
  // Kept: dead records are freed at the end of any walk, an inner one too. Registrations rely on it: after
  // an unregistration returns, the record is gone.
  void EndIterate() {
    iterationDepth = std::max(iterationDepth - 1, 0);
    if (needsClean) Clean();
  }

  void Clean() {
    VYRACleanResources();
    needsClean = false;
  }

  int IterationDepth() const { return iterationDepth; }

 private:
  friend class VYRAResourceWalk<T>;

  void VYRAAddResource(T* item) {
    if (head != nullptr && head->prev != nullptr) NoteDropped(head->prev);
    item->prev = nullptr;
    item->next = head;
    if (head != nullptr) head->prev = item;
    item->dead = false;
    CutDeadChainBehind(item);
    head = item;
  }

  void VYRAKillResource(T* item, bool deferred) {
    if (!deferred) {
      for (VYRAResourceWalk<T>* walk = walks; walk != nullptr; walk = walk->outer) walk->Forget(item);
      VYRARemoveResource(item);
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
    for (VYRAResourceWalk<T>* walk = walks; walk != nullptr; walk = walk->outer) walk->StepOff(item);
    if (head == item) {
      head = item->next;
      if (head == nullptr && item->prev != nullptr) NoteDropped(item->prev);
    }
    if (item->prev != nullptr) item->prev->next = item->next;
    if (item->next != nullptr && item->next->prev == item) item->next->prev = item->prev;
    UnlinkDropped(item);
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

  // A run of records was dropped from the list; this is its last one. It still names the record that used
  // to follow it, and a walk inside the run would go there, so the list keeps that link true.
  void NoteDropped(T* tail) {
    tail->nextDropped = droppedTails;
    droppedTails = tail;
  }

  // Mends the dropped runs for a record that is being unlinked: those that lead to it, and its own.
  void UnlinkDropped(T* item) {
    T** link = &droppedTails;
    while (T* tail = *link) {
      if (tail != item) {
        if (tail->next == item) tail->next = item->next;
        link = &tail->nextDropped;
        continue;
      }
      *link = tail->nextDropped;
      tail->nextDropped = nullptr;
      if (tail->prev != nullptr) {
        tail->prev->nextDropped = *link;
        *link = tail->prev;
        link = &tail->prev->nextDropped;
      }
    }
  }

  T* head = nullptr;      // an anchor into the chain: the first record, or after a reverse begin the last
  T* deadHead = nullptr;  // dead records that wait to be freed
  int iterationDepth = 0;
  bool needsClean = false;
  VYRAResourceWalk<T>* walks = nullptr;  // the innermost walk in progress
  T* droppedTails = nullptr;
};

// A walk in progress. It begins when it is made and ends with its scope, also when a callback throws:
//
//   VYRAResourceWalk walk(gFlightLoops);
//   while (VYRAFlightLoopRecord* loop = walk.Next()) { ... }
//
// Whatever happens to the list in between, Next never gives a record that was freed, gives no record twice,
// and passes over none that is still in the list, other than ones that were added during the walk.
template <class T>
class VYRAResourceWalk {
 public:
  enum class Order { forward, reverse };

// GCC does not see that the destructor takes the address back.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdangling-pointer"
#endif
  explicit VYRAResourceWalk(VYRAResourceList<T>& walked, Order walkOrder = Order::forward)
      : list(walked),
        order(walkOrder),
        resume(order == Order::forward ? list.BeginIterate() : list.BeginReverseIterate()),
        outer(list.walks) {
    list.walks = this;
  }
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif
  ~VYRAResourceWalk() {
    list.walks = outer;
    if (ends) list.EndIterate();
  }
  VYRAResourceWalk(const VYRAResourceWalk&) = delete;
  VYRAResourceWalk& operator=(const VYRAResourceWalk&) = delete;

  // The next record, dead ones included, or null at the end.
  T* Next() {
    if (onDetour) [[unlikely]]
      return NextByDetour();
    record = Successor(record);
    if (record == nullptr) TakeLater();
    return record;
  }

  // The next record of a forward walk that is wanted, after the one that the walk gave last, or null for the
  // first. `wanted` only looks: nothing changes the list meanwhile, so the others are passed without a note.
  template <class Predicate>
  T* NextWhere(Predicate wanted, T* last) {
    for (;;) {
      if (!onDetour && last != nullptr) [[likely]] {
        while (T* item = last->get_next()) {
          if (wanted(*item)) return record = item;
          last = item;
        }
        record = last;
      }
      last = Next();
      if (last == nullptr || wanted(*last)) return last;
    }
  }

  // Whether the record that Next gave last is still in memory.
  bool HoldsRecord() const { return record != nullptr; }

  // For the walks whose begin is meant to have no end: the list's depth stays raised.
  void LeaveOpen() { ends = false; }

 private:
  friend class VYRAResourceList<T>;

  struct Moved {
    std::vector<T*> later;     // to come after the end of the chain
    std::vector<T*> passOver;  // had their turn
  };

  static bool Contains(const std::vector<T*>& records, const T* item) {
    return std::find(records.begin(), records.end(), item) != records.end();
  }

  T* Successor(const T* item) const { return order == Order::forward ? item->get_next() : item->get_prev(); }

  // Next, after the list was changed under the walk.
  T* NextByDetour() {
    do {
      record = displaced ? resume : Successor(record);
      displaced = false;
    } while (record != nullptr && moved != nullptr && Contains(moved->passOver, record));
    onDetour = moved != nullptr && !moved->passOver.empty();
    if (record == nullptr) TakeLater();
    return record;
  }

  // At the end of the chain come the records that were moved to where this walk had been already.
  void TakeLater() {
    Displace(nullptr);
    if (moved == nullptr || moved->later.empty()) return;
    record = moved->later.front();
    moved->later.erase(moved->later.begin());
  }

  bool IsAhead(const T* item) const {
    for (T* next = displaced ? resume : Successor(record); next != nullptr; next = Successor(next)) {
      if (next == item) return true;
    }
    return false;
  }

  // A record is moved to the front, which is behind a forward walk and ahead of a reverse one: one that had
  // its turn does not get another, and one that was still to come does not lose it.
  void BeforeMove(const T* item) { moverWasAhead = IsAhead(item); }
  void AfterMove(T* item) {
    const bool isAhead = IsAhead(item);
    if (isAhead == moverWasAhead) return;
    if (moved == nullptr) moved = std::make_unique<Moved>();
    if (Contains(moved->passOver, item)) return;
    (isAhead ? moved->passOver : moved->later).push_back(item);
    onDetour = true;
  }

  // A record is about to be unlinked.
  void StepOff(T* item) {
    T*& next = displaced ? resume : record;
    if (next == item) Displace(Successor(item));
  }

  void Displace(T* next) {
    resume = next;
    displaced = true;
    onDetour = true;
  }

  // A record is about to be freed.
  void Forget(T* item) {
    StepOff(item);
    if (record == item) record = nullptr;
    if (moved == nullptr) return;
    std::erase(moved->later, item);
    std::erase(moved->passOver, item);
  }

  VYRAResourceList<T>& list;
  Order order;
  bool displaced = true;  // the next record is `resume`, not the one that follows `record`
  bool onDetour = true;   // displaced, or there are records to pass over
  bool ends = true;
  bool moverWasAhead = false;
  T* record = nullptr;
  T* resume;
  VYRAResourceWalk* outer;
  std::unique_ptr<Moved> moved;  // none until a record is moved during the walk, which is rare
};
