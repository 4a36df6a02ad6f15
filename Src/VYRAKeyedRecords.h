// The index beside a list of records: those with a key, in the order in which they were added to it. With it
// nothing is searched for through everybody's records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "VYRAChain.h"
#include "VYRAHashIndex.h"

// `keyOf` is a member of a record, or a function of it without arguments: a number, a pointer, a tuple of
// them, or a text. A record's key does not change while it is in the index. `links` is as for VYRAChain.
template <class T, auto keyOf, auto links>
class VYRAKeyedRecords {
 public:
  using Key = std::remove_cvref_t<std::invoke_result_t<decltype(keyOf), const T&>>;

  // The first record with a key, or null, and the next with the key of a record.
  T* First(const Key& key) {
    const Entry* entry = Find(key);
    return entry != nullptr ? entry->chain.First() : nullptr;
  }
  static T* Next(T* record) { return Chain::Next(record); }

  void AddFirst(T* record) {
    Entry* entry = Find(KeyOf(record));
    entry != nullptr ? entry->chain.AddFirst(record) : AddKeyOf(record);
  }
  void AddLast(T* record) {
    Entry* entry = Find(KeyOf(record));
    entry != nullptr ? entry->chain.AddLast(record) : AddKeyOf(record);
  }

  // Takes a record out, and with the last one its key.
  void Remove(T* record) {
    Entry* entry = Find(KeyOf(record));
    entry->chain.Remove(record);
    if (entry->chain.First() == nullptr) index.Remove(entry);
  }

  // How many keys there are.
  std::size_t Count() const { return index.Count(); }

 private:
  using Chain = VYRAChain<T, links>;

  struct Entry {
    Chain chain;
    std::uint64_t hash = 0;

    bool IsUsed() const { return chain.First() != nullptr; }
    std::uint64_t Hash() const { return hash; }
  };

  // Of a number or a pointer, the hash is its bits: no other has the same, so nothing is left to compare.
  static constexpr bool kHashIsKey = std::is_pointer_v<Key> || std::is_integral_v<Key>;

  template <class Word>
  static std::uint64_t BitsOf(Word word) {
    if constexpr (std::is_pointer_v<Word>) {
      return reinterpret_cast<std::uintptr_t>(word);
    } else {
      return static_cast<std::uint64_t>(word);
    }
  }

  static std::uint64_t HashOf(const Key& key) {
    if constexpr (kHashIsKey) {
      return BitsOf(key);
    } else if constexpr (std::is_same_v<Key, std::string_view>) {
      return std::hash<std::string_view>()(key);
    } else {
      std::uint64_t hash = 0;
      const auto add = [&hash](std::uint64_t bits) {
        hash = (hash ^ bits) * 0x9E3779B97F4A7C15U;  // as in VYRAHashIndex
        hash ^= hash >> 32;
      };
      std::apply([&](const auto&... words) { (add(BitsOf(words)), ...); }, key);
      return hash;
    }
  }

  static Key KeyOf(const T* record) { return std::invoke(keyOf, *record); }

  Entry* Find(const Key& key) {
    return index.Find(HashOf(key), [&](const Entry& entry) {
      if constexpr (kHashIsKey) return true;
      return KeyOf(entry.chain.First()) == key;
    });
  }

  void AddKeyOf(T* record) {
    Entry added{{}, HashOf(KeyOf(record))};
    added.chain.AddFirst(record);
    index.Add(added);
  }

  VYRAHashIndex<Entry> index;
};
