// Tells which slot an address is, among the slots of many blocks, without following it: how a handle that a
// plugin gives, which may be anything, is known to be good. Each slot has a mark beside the index, so that
// what is asked most is answered without a look at the slot either.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>

#include "VYRAHashIndex.h"

template <class Slot, std::size_t slotsPerBlock>
class VYRASlotIndex {
  static_assert(slotsPerBlock <= 64, "the marks of a block are the bits of a word");

 public:
  // The slots of a block, found by where they start.
  class Block {
   public:
    Block() = default;
    explicit Block(const Slot* slots) : inverted(~reinterpret_cast<std::uintptr_t>(slots)) {}

    std::uintptr_t Begin() const { return ~inverted; }
    bool IsUsed() const { return inverted != 0; }
    std::uint64_t Hash() const { return GranuleOf(Begin()); }

    std::uint64_t marks = 0;

   private:
    // Inverted, as a leak checker would take it for a reference, and find nothing that only this one reaches.
    std::uintptr_t inverted = 0;
  };

  // A slot: its block, and its number there. Without a block, no slot. Good until a block is added or
  // removed.
  struct Place {
    Block* block = nullptr;
    std::size_t number = 0;

    const Slot* First() const {
      assert(block != nullptr);
      return reinterpret_cast<const Slot*>(block->Begin());
    }
    bool IsMarked() const { return block != nullptr && (block->marks >> number & 1U) != 0; }
    void Mark(bool marked) const {
      assert(block != nullptr);
      const std::uint64_t bit = std::uint64_t{1} << number;
      block->marks = marked ? block->marks | bit : block->marks & ~bit;
    }
  };

  // The place of a slot, whose address alone takes part: the pointer may point anywhere.
  Place Find(const void* pointer) {
    const auto address = reinterpret_cast<std::uintptr_t>(pointer);
    for (const std::uintptr_t granule : {GranuleOf(address), GranuleOf(address) - 1}) {
      Block* block = blocks.Find(granule, [](const Block&) { return true; });
      if (block == nullptr) continue;
      const std::uintptr_t distance = address - block->Begin();
      const std::size_t number = distance / sizeof(Slot);
      if (number < slotsPerBlock && distance % sizeof(Slot) == 0) return {block, number};
    }
    return {};
  }

  void Add(const Slot* slots) { blocks.Add(Block(slots)); }
  void Remove(const Slot* slots) { blocks.Remove(Find(slots).block); }

 private:
  // A granule is as long as the slots of a block, so at most one block starts in it, and an address lies in a
  // block that starts in the address's own granule or in the one before.
  static std::uintptr_t GranuleOf(std::uintptr_t address) { return address / (sizeof(Slot) * slotsPerBlock); }

  VYRAHashIndex<Block> blocks;
};
