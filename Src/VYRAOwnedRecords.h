// What each plugin owns of a kind of record, so that what a leaving plugin leaves behind is found without a
// search through everybody's.
#pragma once

#include <cstddef>
#include <vector>

#include "VYRAChain.h"
#include "VYRADefs.h"

// `links` as for VYRAChain. A record is in at most one plugin's chain.
template <class T, auto links>
class VYRAOwnedRecords {
 public:
  // The first record of a plugin, or null, and the one behind a record.
  T* First(VYRAPluginID plugin) const {
    return PlaceOf(plugin) < chains.size() ? chains[PlaceOf(plugin)].First() : nullptr;
  }
  static T* Next(T* record) { return VYRAChain<T, links>::Next(record); }

  void AddFirst(VYRAPluginID plugin, T* record) { ChainOf(plugin).AddFirst(record); }
  void AddLast(VYRAPluginID plugin, T* record) { ChainOf(plugin).AddLast(record); }

  // Takes a record out of its plugin's chain.
  void Remove(VYRAPluginID plugin, T* record) { chains[PlaceOf(plugin)].Remove(record); }

 private:
  // VYRA_NO_PLUGIN, which is -1, has a chain as well.
  static std::size_t PlaceOf(VYRAPluginID plugin) { return static_cast<std::size_t>(plugin) + 1; }

  VYRAChain<T, links>& ChainOf(VYRAPluginID plugin) {
    if (chains.size() <= PlaceOf(plugin)) chains.resize(PlaceOf(plugin) + 1);
    return chains[PlaceOf(plugin)];
  }

  std::vector<VYRAChain<T, links>> chains;
};
