// A walk over the records of a VYRAResourceList in which plugins may be called.
#pragma once

#include "VYRAResourceCursor.h"
#include "VYRAResourceList.h"

// A walk in progress. It begins when it is made and ends with its scope, also when a callback throws:
//
//   VYRAResourceWalk walk(gWindows);
//   while (VYRAWindowCallbackRecord* window = walk.Next()) { ... }
//
// Whatever happens to the list in between, Next gives no record that was freed, none twice, and none that was
// added after the walk began; and it passes over none that was there and still is.
template <class T>
class VYRAResourceWalk : private VYRAResourceCursor<T> {
  using Cursor = VYRAResourceCursor<T>;

 public:
  using Order = typename Cursor::Order;

  explicit VYRAResourceWalk(VYRAResourceList<T>& walked)
      : Cursor(walked.BeginIterate(), walked.innermostCursor), list(walked) {
    Enter();
  }

  // Order::reverse walks from the back.
  VYRAResourceWalk(VYRAResourceList<T>& walked, Order order) requires(Cursor::IsStack())
      : Cursor(order == Order::forward ? walked.BeginIterate() : walked.BeginReverseIterate(),
               walked.innermostCursor),
        list(walked) {
    Cursor::stack.order = order;
    Enter();
  }
  ~VYRAResourceWalk() {
    list.innermostCursor = Cursor::outer;
    if (ends) list.EndIterate();
  }
  VYRAResourceWalk(const VYRAResourceWalk&) = delete;
  VYRAResourceWalk& operator=(const VYRAResourceWalk&) = delete;

  // The next record, dead ones included, or null at the end.
  T* Next() { return Cursor::Step(); }

  // The records of a forward walk that are wanted, instead of Next:
  //
  //   for (VYRAFlightLoopRecord& loop : walk.Where(isDue)) { ... }
  //
  // `wanted` only looks: nothing changes the list meanwhile, so those that are not wanted are passed without
  // a note of where the walk stands.
  template <class Predicate>
  auto Where(Predicate wanted) {
    return Selection<Predicate>(*this, wanted);
  }

  // Whether the record that the walk gave last is still in memory.
  bool HoldsRecord() const { return Cursor::record != nullptr; }

  // For the walks whose begin is meant to have no end: the list's depth stays raised.
  void LeaveOpen() { ends = false; }

 private:
// GCC does not see that the destructor takes the address back.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdangling-pointer"
#endif
  void Enter() {
    if constexpr (Cursor::IsStack()) Cursor::stack.newestSerial = list.newestSerial;
    list.innermostCursor = this;
  }
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

  // The first record behind `last` that is wanted; null stands for before the first, and for none.
  template <class Predicate>
  [[gnu::always_inline]] T* NextWhere(const Predicate& wanted, T* last) {
    for (;;) {
      if (!Cursor::onDetour && last != nullptr) [[likely]] {
        while (T* item = last->get_next()) {
          if (wanted(*item)) return Cursor::record = item;
          last = item;
        }
        Cursor::record = last;
      }
      last = Next();
      if (last == nullptr || wanted(*last)) return last;
    }
  }

  // What Where gives to a range-for. The iterator has the last record at hand itself: read back from the
  // walk, which the list reaches as well, it would cost each call of a plugin a visit to memory.
  template <class Predicate>
  class Selection {
   public:
    struct End {};
    class Iterator {
     public:
      Iterator(VYRAResourceWalk& owner, const Predicate& predicate)
          : walk(owner), wanted(predicate), last(walk.NextWhere(wanted, static_cast<T*>(nullptr))) {}
      T& operator*() const { return *last; }
      Iterator& operator++() {
        last = walk.NextWhere(wanted, last);
        return *this;
      }
      bool operator!=(End /*end*/) const { return last != nullptr; }

     private:
      VYRAResourceWalk& walk;
      const Predicate& wanted;
      T* last;
    };

    Selection(VYRAResourceWalk& owner, Predicate predicate) : walk(owner), wanted(predicate) {}
    Iterator begin() { return Iterator(walk, wanted); }
    End end() { return {}; }

   private:
    VYRAResourceWalk& walk;
    Predicate wanted;
  };

  VYRAResourceList<T>& list;
  bool ends = true;
};
