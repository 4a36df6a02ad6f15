// The pool of dataref records: blocks of 32 that are never freed, so that records never move.
#include <cstdint>

#include "VYRADataAccessInternal.h"
#include "VYRAHashIndex.h"

VYRADataBlock* gDataBlock = nullptr;
VYRADataBlock* gDataFree = nullptr;
int gDataCount = 0;

namespace {

std::uintptr_t GranuleOf(const void* address) {
  return reinterpret_cast<std::uintptr_t>(address) / sizeof(VYRADataBlock);
}

// A block, found by where it starts. A granule is as long as a block, so at most one block starts in it, and
// an address lies in a block that starts in the address's own granule or in the one before.
struct BlockEntry {
  const VYRADataBlock* block = nullptr;
  std::uint32_t owned = 0;  // a bit for each slot whose record has an owner

  bool IsUsed() const { return block != nullptr; }
  std::uint64_t Hash() const { return GranuleOf(block); }
};
static_assert(VYRADataBlock::kCapacity <= 32,
              "the slots of a block are counted in the bits of BlockEntry::owned");

VYRAHashIndex<BlockEntry> gBlocks;

// A slot that was handed out: its block, and its number there. Without a block, no slot.
struct Slot {
  BlockEntry* entry = nullptr;
  std::size_t number = 0;
};

// The slot of a record, whose address alone takes part: the pointer may point anywhere.
Slot SlotOf(const VYRAData_t* pointer) {
  const std::uintptr_t granule = GranuleOf(pointer);
  for (const std::uintptr_t candidate : {granule, granule - 1}) {
    BlockEntry* entry = gBlocks.Find(candidate, [](const BlockEntry&) { return true; });
    if (entry == nullptr) continue;
    // Every block but the last is full, so theirs need not be read.
    const int used = entry->block == gDataFree ? gDataFree->used : VYRADataBlock::kCapacity;
    const std::uintptr_t distance =
        reinterpret_cast<std::uintptr_t>(pointer) - reinterpret_cast<std::uintptr_t>(entry->block->slots);
    const std::size_t number = distance / sizeof(VYRAData_t);
    if (number < static_cast<std::size_t>(used) && distance % sizeof(VYRAData_t) == 0) return {entry, number};
  }
  return {};
}

void AllocDataBlock() {
  auto* block = new VYRADataBlock;
  gBlocks.Add({block});
  if (gDataFree != nullptr) gDataFree->next = block;
  if (gDataBlock == nullptr) gDataBlock = block;
  gDataFree = block;
}

}  // namespace

VYRAData_t* AllocDataRef() {
  if (gDataFree == nullptr || gDataFree->used == gDataFree->capacity) AllocDataBlock();
  ++gDataCount;
  return &gDataFree->slots[gDataFree->used++];
}

VYRAData_t* DataIsValid(VYRADataRef pointer) { return SlotOf(pointer).entry != nullptr ? pointer : nullptr; }

bool VYRADataAccessIsOwned(VYRADataRef pointer) {
  const Slot slot = SlotOf(pointer);
  return slot.entry != nullptr && (slot.entry->owned >> slot.number & 1U) != 0;
}

void VYRADataAccessNoteOwned(const VYRAData_t* record, bool owned) {
  const Slot slot = SlotOf(record);
  const std::uint32_t bit = std::uint32_t{1} << slot.number;
  slot.entry->owned = owned ? slot.entry->owned | bit : slot.entry->owned & ~bit;
}

const char* DebugDataRefName(VYRADataRef dataRef) {
  if (dataRef == nullptr) return "(null dataref)";
  const VYRAData_t* record = DataIsValid(dataRef);
  return record != nullptr ? record->name.data() : "(invalid dataref)";
}
