// A hash table that is searched far more often than it changes: the index beside an ordered map, or what a
// host asks for in every frame. Nearly always a look-up is a multiplication and one place in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

// An Entry is small and copyable. It knows its Hash(); IsUsed() tells it from a default-constructed one,
// which marks a free place.
template <class Entry>
class VYRAHashIndex {
 public:
  VYRAHashIndex() = default;
  VYRAHashIndex(const VYRAHashIndex&) = delete;
  VYRAHashIndex& operator=(const VYRAHashIndex&) = delete;

  // The entry with this hash that matches, or null. Good until one is added or removed.
  template <class Matches>
  Entry* Find(std::uint64_t hash, Matches matches) {
    for (std::size_t place = PlaceOf(hash); first[place].IsUsed(); place = After(place)) {
      if (first[place].Hash() == hash && matches(first[place])) return &first[place];
    }
    return nullptr;
  }

  // Adds an entry that is not there yet.
  Entry& Add(const Entry& entry) {
    if (2 * ++count > entries.size()) Grow();
    return Place(entry);
  }

  // Takes an entry of the table out. What it kept from its own place moves up, so that nothing marks where it
  // stood and look-ups stay as short as if it had never been there.
  void Remove(const Entry* entry) {
    auto hole = static_cast<std::size_t>(entry - entries.data());
    for (std::size_t place = After(hole); entries[place].IsUsed(); place = After(place)) {
      const bool mayMove = Distance(PlaceOf(entries[place].Hash()), place) >= Distance(hole, place);
      if (!mayMove) continue;
      entries[hole] = entries[place];
      hole = place;
    }
    entries[hole] = Entry();
    --count;
  }

  std::size_t Count() const { return count; }

 private:
  // Multiplicative hashing with 2^64 divided by the golden ratio (D. E. Knuth, The Art of Computer
  // Programming, volume 3, 6.4): the product's upper bits depend on all of the hash's, which may be an
  // address.
  std::size_t PlaceOf(std::uint64_t hash) const { return (hash * 0x9E3779B97F4A7C15U) >> shift; }
  std::size_t After(std::size_t place) const { return (place + 1) & (entries.size() - 1); }
  std::size_t Distance(std::size_t from, std::size_t to) const { return (to - from) & (entries.size() - 1); }

  Entry& Place(const Entry& entry) {
    std::size_t place = PlaceOf(entry.Hash());
    while (entries[place].IsUsed()) place = After(place);
    return entries[place] = entry;
  }

  void Grow() {
    const std::size_t size = entries.empty() ? kSmallest : 2 * entries.size();
    const std::vector<Entry> old = std::exchange(entries, std::vector<Entry>(size));
    first = entries.data();
    if (size > kSmallest) --shift;
    for (const Entry& entry : old) {
      if (entry.IsUsed()) Place(entry);
    }
  }

  static constexpr std::size_t kSmallest = 2;

  // What is searched while there are no entries, so that neither a table that is never used takes memory, nor
  // a search asks first whether there are any.
  static inline Entry gNone[kSmallest];

  std::vector<Entry> entries;  // a power of two, at most half of them used
  Entry* first = gNone;        // the first of them
  std::size_t count = 0;
  int shift = 63;  // 64 minus the number of bits that an index into `entries` has
};
