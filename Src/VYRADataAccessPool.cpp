// The pool of dataref records: blocks of 32 that are never freed, so that records never move.
#include "VYRADataAccessInternal.h"
#include "VYRASlotIndex.h"

VYRADataBlock* gDataBlock = nullptr;
VYRADataBlock* gDataFree = nullptr;
int gDataCount = 0;

namespace {

// The marks are those of the records that have an owner.
using Slots = VYRASlotIndex<VYRAData_t, VYRADataBlock::kCapacity>;
Slots gSlots;

// The place of a record that was handed out, or none.
Slots::Place PlaceOf(const VYRAData_t* pointer) {
  const Slots::Place place = gSlots.Find(pointer);
  // Every block but the last is full, so theirs need not be read.
  const bool isFree = place.block != nullptr && place.First() == gDataFree->slots &&
                      place.number >= static_cast<std::size_t>(gDataFree->used);
  return isFree ? Slots::Place() : place;
}

void AllocDataBlock() {
  auto* block = new VYRADataBlock;
  gSlots.Add(block->slots);
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

VYRAData_t* DataIsValid(VYRADataRef pointer) { return PlaceOf(pointer).block != nullptr ? pointer : nullptr; }

// What was not handed out has no owner.
bool VYRADataAccessIsOwned(VYRADataRef pointer) { return gSlots.Find(pointer).IsMarked(); }

void VYRADataAccessNoteOwned(const VYRAData_t* record, bool owned) { gSlots.Find(record).Mark(owned); }

const char* DebugDataRefName(VYRADataRef dataRef) {
  if (dataRef == nullptr) return "(null dataref)";
  const VYRAData_t* record = DataIsValid(dataRef);
  return record != nullptr ? record->name.data() : "(invalid dataref)";
}
