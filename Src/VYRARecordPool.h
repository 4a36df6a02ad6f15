// Memory for records of one type, in blocks: records that are walked together lie together, wherever the
// rest of the program has left room. In a heap that has been used for a while, a walk over scattered records
// takes several times as long, as nearly each costs a visit to slow memory. Blocks are never given back.
//
// A plugin may go on using the handle of a record that is gone. So that it does not soon find another record
// there, what was given back first is taken first, and not before a whole block's worth waits.
#pragma once

#include <cstddef>

template <class T>
class VYRARecordPool {
 public:
  static constexpr std::size_t kSlotsPerBlock = 64;

  // Room for one record.
  static void* Take() {
    if (gFreeCount >= kSlotsPerBlock) return TakeOldest();
    if (gBlock == nullptr || gBlock->used == kSlotsPerBlock) gBlock = new Block{gBlock, 0, {}};
    return &gBlock->slots[gBlock->used++];
  }

  static void Give(void* room) {
    auto* slot = static_cast<Slot*>(room);
    slot->nextFree = nullptr;
    (gNewest != nullptr ? gNewest->nextFree : gOldest) = slot;
    gNewest = slot;
    ++gFreeCount;
  }

 private:
  union Slot {
    Slot* nextFree;
    alignas(T) unsigned char record[sizeof(T)];
  };
  struct Block {
    Block* previous;  // keeps the full blocks in reach of leak checkers
    std::size_t used;
    Slot slots[kSlotsPerBlock];
  };

  static void* TakeOldest() {
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
};

// The base of a record whose memory comes from its type's pool. With VYRA_RECORDS_FROM_HEAP each is an
// allocation of its own, for tools that watch allocations.
template <class T>
struct VYRAPooled_t {
#ifndef VYRA_RECORDS_FROM_HEAP
  static void* operator new(std::size_t /*size*/) { return VYRARecordPool<T>::Take(); }
  static void operator delete(void* record) { VYRARecordPool<T>::Give(record); }
#endif
};
