// Memory for records of one type, in blocks: records that are walked together lie together, wherever the
// rest of the program has left room. In a heap that has been used for a while, a walk over scattered records
// takes several times as long, as nearly each costs a visit to slow memory. Blocks are never given back.
//
// A plugin may go on using the handle of a record that is gone. So that it does not soon find another record
// there, what was given back first is taken first, and not before a whole block's worth waits.
#pragma once

#include <cstddef>
#include <memory>

#include "VYRANeverDestroyed.h"
#include "VYRASlotIndex.h"

struct VYRANothingAside {};

// An Aside of each record is kept apart from it, for what finds records but has no place in their walks: a
// walk takes longer for every byte between one record and the next.
template <class T, class Aside = VYRANothingAside>
class VYRARecordPool {
 public:
#ifdef VYRA_RECORDS_FROM_HEAP
  static constexpr bool kFromHeap = true;
#else
  static constexpr bool kFromHeap = false;
#endif
  static constexpr std::size_t kSlotsPerBlock = kFromHeap ? 1 : 64;

  // Room for one record.
  static void* Take() {
    Slot* const slot = gFreeCount >= kSlotsPerBlock ? TakeOldest() : TakeNew();
    gSlots->Find(slot).Mark(true);
    return slot;
  }

  static void Give(void* room) {
    auto* const slot = static_cast<Slot*>(room);
    const auto place = gSlots->Find(slot);
    if constexpr (kFromHeap) {
      const std::unique_ptr<Block> block(BlockOf(place));
      gSlots->Remove(slot);
      return;
    }
    place.Mark(false);
    slot->nextFree = nullptr;
    (gNewest != nullptr ? gNewest->nextFree : gOldest) = slot;
    gNewest = slot;
    ++gFreeCount;
  }

  // Whether a pointer, which may point anywhere, is the address of a record.
  static bool Holds(const void* pointer) { return gSlots->Find(pointer).IsMarked(); }

  static Aside& AsideOf(const T& record) {
    const auto place = gSlots->Find(&record);
    return BlockOf(place)->asides[place.number];
  }

 private:
  union Slot {
    Slot* nextFree;
    alignas(T) unsigned char record[sizeof(T)];
  };
  struct Block {
    Slot slots[kSlotsPerBlock];
    Block* previous = nullptr;  // keeps the full blocks in reach of leak checkers
    std::size_t used = 0;
    Aside asides[kSlotsPerBlock];
  };
  using Slots = VYRASlotIndex<Slot, kSlotsPerBlock>;

  // The slots are the first of a block.
  static Block* BlockOf(const typename Slots::Place& place) {
    return reinterpret_cast<Block*>(const_cast<Slot*>(place.First()));
  }

  static Block* AddBlock() {
    auto block = std::make_unique<Block>();
    gSlots->Add(block->slots);
    return block.release();
  }

  static Slot* TakeNew() {
    if constexpr (kFromHeap) return AddBlock()->slots;
    if (gBlock == nullptr || gBlock->used == kSlotsPerBlock) {
      Block* const full = gBlock;
      gBlock = AddBlock();
      gBlock->previous = full;
    }
    return &gBlock->slots[gBlock->used++];
  }

  static Slot* TakeOldest() {
    Slot* slot = gOldest;
    gOldest = slot->nextFree;
    if (gOldest == nullptr) gNewest = nullptr;
    --gFreeCount;
    return slot;
  }

  static inline Block* gBlock = nullptr;  // the one that is being filled
  // The slots that were given back, from the oldest to the newest.
  static inline Slot* gOldest = nullptr;
  static inline Slot* gNewest = nullptr;
  static inline std::size_t gFreeCount = 0;
  static inline VYRANeverDestroyed<Slots> gSlots;
};

// The base of a record whose memory comes from its type's pool. With VYRA_RECORDS_FROM_HEAP each is an
// allocation of its own, for tools that watch allocations.
template <class T, class Aside = VYRANothingAside>
struct VYRAPooled_t {
  using Pool = VYRARecordPool<T, Aside>;

  static void* operator new(std::size_t /*size*/) { return Pool::Take(); }
  static void operator delete(void* record) { Pool::Give(record); }
};
