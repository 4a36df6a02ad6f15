// The pool of dataref records: blocks of 32 that are never freed, so that records never move.
#include <functional>

#include "VYRADataAccessRegistry.h"

std::map<std::string, VYRAData_t*, std::less<>> gDataRefs;
VYRADataBlock* gDataBlock = nullptr;
VYRADataBlock* gDataFree = nullptr;
int gDataCount = 0;

namespace {

void AllocDataBlock() {
  auto* block = new VYRADataBlock;
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

VYRAData_t* DataIsValid(VYRADataRef pointer) {
  // The pointer may point anywhere, so only its address takes part.
  const auto address = reinterpret_cast<std::uintptr_t>(pointer);
  for (const VYRADataBlock* block = gDataBlock; block != nullptr; block = block->next) {
    const auto first = reinterpret_cast<std::uintptr_t>(block->slots);
    const std::uintptr_t distance = address - first;
    const std::uintptr_t length = static_cast<std::uintptr_t>(block->used) * sizeof(VYRAData_t);
    if (address >= first && distance < length) {
      return distance % sizeof(VYRAData_t) == 0 ? pointer : nullptr;
    }
  }
  return nullptr;
}

const char* DebugDataRefName(VYRADataRef dataRef) {
  if (dataRef == nullptr) return "(null dataref)";
  const VYRAData_t* record = DataIsValid(dataRef);
  return record != nullptr ? record->name.c_str() : "(invalid dataref)";
}
