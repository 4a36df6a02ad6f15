// Records in the order in which they were added, any of which may leave: which of them stands at a place, and
// at which place one stands, without counting. Both take a step for each doubling of the number of records.
//
// A binary indexed tree (P. M. Fenwick, A New Data Structure for Cumulative Frequency Tables, 1994) counts
// who is left.
#pragma once

#include <bit>
#include <cstddef>
#include <vector>

// `slotOf` is the member in which a record keeps its slot here. Later records have higher slots.
template <class T, std::size_t T::*slotOf>
class VYRASequence {
 public:
  std::size_t Count() const { return count; }

  // The record at a place below the count.
  T* At(std::size_t place) const {
    std::size_t slot = 0;
    for (std::size_t step = std::bit_floor(slots.size()); step > 0; step /= 2) {
      if (slot + step > slots.size() || Sum(slot + step) > place) continue;
      slot += step;
      place -= Sum(slot);
    }
    return slots[slot].record;
  }

  std::size_t PlaceOf(const T& record) const {
    std::size_t place = 0;
    for (std::size_t number = record.*slotOf; number > 0; number -= LowestBit(number)) place += Sum(number);
    return place;
  }

  void Append(T* record) {
    slots.push_back({record});
    ++count;
    CountIn(slots.size());
  }

  void Remove(T* record) {
    std::size_t number = record->*slotOf + 1;
    slots[number - 1].record = nullptr;
    for (; number <= slots.size(); number += LowestBit(number)) --slots[number - 1].sum;
    --count;
    while (!slots.empty() && slots.back().record == nullptr) slots.pop_back();
    if (slots.size() > 2 * count) CloseGaps();
  }

 private:
  // Slots are numbered from 1 in the tree: the sum of a number tells how many records stand in the slots up
  // to it, as many as its lowest bit says.
  struct Slot {
    T* record = nullptr;  // null: it left
    std::size_t sum = 0;
  };

  static std::size_t LowestBit(std::size_t number) { return number & (~number + 1); }
  std::size_t Sum(std::size_t number) const { return slots[number - 1].sum; }

  // Counts the last slot so far in.
  void CountIn(std::size_t number) {
    Slot& slot = slots[number - 1];
    slot.sum = 1;
    for (std::size_t step = 1; step < LowestBit(number); step *= 2) slot.sum += Sum(number - step);
    slot.record->*slotOf = number - 1;
  }

  void CloseGaps() {
    std::erase_if(slots, [](const Slot& slot) { return slot.record == nullptr; });
    for (std::size_t number = 1; number <= slots.size(); ++number) CountIn(number);
  }

  std::vector<Slot> slots;
  std::size_t count = 0;
};
