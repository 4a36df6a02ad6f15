// Memory for records of one type, in blocks: records that are walked together lie together, wherever the
// rest of the program has left room. In a heap that has been used for a while, a walk over scattered records
// takes several times as long, as nearly each costs a visit to slow memory. Blocks are never given back.
#pragma once

#include <cstddef>

template <class T>
class VYRARecordPool {
 public:
  // Room for one record. What was given back last is taken first.
  static void* Take() {
    if (gFree == nullptr) {
      if (gBlock == nullptr || gBlock->used == kSlotsPerBlock) gBlock = new Block{gBlock, 0, {}};
      return &gBlock->slots[gBlock->used++];
    }
    Slot* slot = gFree;
    gFree = slot->nextFree;
    return slot;
  }

  static void Give(void* room) {
    auto* slot = static_cast<Slot*>(room);
    slot->nextFree = gFree;
    gFree = slot;
  }

 private:
  static constexpr std::size_t kSlotsPerBlock = 64;

  union Slot {
    Slot* nextFree;
    alignas(T) unsigned char record[sizeof(T)];
  };
  struct Block {
    Block* previous;  // keeps the full blocks in reach of leak checkers
    std::size_t used;
    Slot slots[kSlotsPerBlock];
  };

  static inline Block* gBlock = nullptr;  // the one that is being filled
  static inline Slot* gFree = nullptr;
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
