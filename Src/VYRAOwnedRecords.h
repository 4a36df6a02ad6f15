// What each plugin owns of a kind of record, so that what a leaving plugin leaves behind is found without a
// search through everybody's. A record is in at most one plugin's chain.
#pragma once

#include <cstddef>
#include <vector>

#include "VYRADefs.h"

// The base of a record that is kept in such chains.
template <class T>
struct VYRAOwned_t {
  T* nextOwned = nullptr;
  T* previousOwned = nullptr;
};

template <class T>
class VYRAOwnedRecords {
 public:
  // The first record of a plugin, or null.
  T* First(VYRAPluginID plugin) const {
    return PlaceOf(plugin) < chains.size() ? chains[PlaceOf(plugin)] : nullptr;
  }

  void Add(VYRAPluginID plugin, T* record) {
    const std::size_t place = PlaceOf(plugin);
    if (chains.size() <= place) chains.resize(place + 1);
    record->previousOwned = nullptr;
    record->nextOwned = chains[place];
    if (record->nextOwned != nullptr) record->nextOwned->previousOwned = record;
    chains[place] = record;
  }

  // Takes a record out of its plugin's chain.
  void Remove(VYRAPluginID plugin, T* record) {
    if (record->nextOwned != nullptr) record->nextOwned->previousOwned = record->previousOwned;
    if (record->previousOwned != nullptr) {
      record->previousOwned->nextOwned = record->nextOwned;
    } else {
      chains[PlaceOf(plugin)] = record->nextOwned;
    }
  }

 private:
  // VYRA_NO_PLUGIN, which is -1, has a chain as well.
  static std::size_t PlaceOf(VYRAPluginID plugin) { return static_cast<std::size_t>(plugin) + 1; }

  std::vector<T*> chains;
};
