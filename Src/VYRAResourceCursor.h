// Where a walk stands in a list. The list tells every cursor of what is about to happen to a record, so that
// the walk goes on to where it would have gone next. VYRAResourceWalk.h is the walk itself.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <vector>

#include "VYRAResource.h"

template <class T>
class VYRAResourceWalk;

template <class T>
class VYRAResourceCursor {
 public:
  enum class Order { forward, reverse };

  // Whether the list is walked from the back as well, and reordered.
  static constexpr bool IsStack() { return std::is_base_of_v<VYRAStackedResource_t<T>, T>; }

 private:
  friend class VYRAResourceList<T>;
  friend class VYRAResourceWalk<T>;

  struct Moved {
    std::vector<T*> later;     // to come after the end of the chain
    std::vector<T*> passOver;  // had their turn
  };

  // What the walk of a stack needs beyond any other's.
  struct InStack {
    Order order = Order::forward;
    bool meetsNew = false;  // records were added to where a reverse walk may come
    bool moverWasAhead = false;
    std::uint64_t newestSerial = 0;  // when the walk began
    std::unique_ptr<Moved> moved;    // none until a record is moved during the walk, which is rare
  };
  struct Nothing {};

  // Of a walk that has yet to come to `first`.
  VYRAResourceCursor(T* first, VYRAResourceCursor* outerCursor) : resume(first), outer(outerCursor) {}
  ~VYRAResourceCursor() = default;
  VYRAResourceCursor(const VYRAResourceCursor&) = delete;
  VYRAResourceCursor& operator=(const VYRAResourceCursor&) = delete;

  // Steps to the next record, and gives it, or null at the end.
  T* Step() {
    if (onDetour) [[unlikely]]
      return StepByDetour();
    record = Successor(record);
    if (record == nullptr) TakeLater();
    return record;
  }

  T* Successor(const T* item) const {
    if constexpr (IsStack()) {
      if (stack.order == Order::reverse) return item->get_prev();
    }
    return item->get_next();
  }

  // Step, after the list was changed under the walk.
  T* StepByDetour() {
    do {
      record = displaced ? resume : Successor(record);
      displaced = false;
    } while (record != nullptr && IsPassedOver(record));
    onDetour = MayPassOver();
    if (record == nullptr) TakeLater();
    return record;
  }

  // At the end of the chain come the records that were moved to where this walk had been already.
  void TakeLater() {
    Displace(nullptr);
    if constexpr (IsStack()) {
      if (stack.moved == nullptr || stack.moved->later.empty()) return;
      record = stack.moved->later.front();
      stack.moved->later.erase(stack.moved->later.begin());
    }
  }

  static bool Contains(const std::vector<T*>& records, const T* item) {
    return std::find(records.begin(), records.end(), item) != records.end();
  }

  bool MayPassOver() const {
    if constexpr (IsStack()) {
      return stack.meetsNew || (stack.moved != nullptr && !stack.moved->passOver.empty());
    }
    return false;
  }

  bool IsPassedOver([[maybe_unused]] const T* item) const {
    if constexpr (IsStack()) {
      return IsNew(item) || (stack.moved != nullptr && Contains(stack.moved->passOver, item));
    }
    return false;
  }

  // Whether a record was added after the walk began. Those wait for the next walk, or a callback that adds a
  // record each time it is called would never let this one end.
  bool IsNew(const T* item) const { return item->get_serial() > stack.newestSerial; }

  bool IsAhead(const T* item) const {
    for (T* next = displaced ? resume : Successor(record); next != nullptr; next = Successor(next)) {
      if (next == item) return true;
    }
    return false;
  }

  // A record is added in front of where the head of the list stands, where a reverse walk may come to.
  void BeforeAdd() {
    if (stack.order == Order::forward) return;
    stack.meetsNew = true;
    onDetour = true;
  }

  // A record is moved to the front, which is behind a forward walk and ahead of a reverse one: one that had
  // its turn does not get another, and one that was still to come does not lose it.
  void BeforeMove(const T* item) { stack.moverWasAhead = IsAhead(item); }
  void AfterMove(T* item) {
    const bool isAhead = IsAhead(item);
    if (isAhead == stack.moverWasAhead || IsNew(item)) return;
    if (stack.moved == nullptr) stack.moved = std::make_unique<Moved>();
    if (Contains(stack.moved->passOver, item)) return;
    (isAhead ? stack.moved->passOver : stack.moved->later).push_back(item);
    onDetour = true;
  }

  // A record is about to be unlinked.
  void BeforeUnlink(T* item) {
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
    BeforeUnlink(item);
    if (record == item) record = nullptr;
    if constexpr (IsStack()) {
      if (stack.moved == nullptr) return;
      std::erase(stack.moved->later, item);
      std::erase(stack.moved->passOver, item);
    }
  }

  T* record = nullptr;  // that the walk gave last; null when it was freed
  T* resume;
  VYRAResourceCursor* outer;
  bool displaced = true;  // the next record is `resume`, not the one that follows `record`
  bool onDetour = true;   // displaced, or there may be records to pass over
  [[no_unique_address]] std::conditional_t<IsStack(), InStack, Nothing> stack;
};
