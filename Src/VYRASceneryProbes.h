// Terrain probes: which plugin made which, and the host's probes behind them, which are reused.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include "VYRARecordPool.h"
#include "VYRAScenery.h"

struct VYRAProbe_t : VYRAPooled_t<VYRAProbe_t> {
  VYRAPluginID owner;
  std::int32_t type;
  std::int32_t hostIndex;
};

// Orders probes by their address and finds them by any handle.
struct VYRAProbeOrder {
  using is_transparent = void;
  static const VYRAProbe_t* Address(const VYRAProbe_t* probe) { return probe; }
  static const VYRAProbe_t* Address(const std::unique_ptr<VYRAProbe_t>& probe) { return probe.get(); }
  template <class Left, class Right>
  bool operator()(const Left& left, const Right& right) const {
    return std::less<>()(Address(left), Address(right));
  }
};

// Every probe. A handle, which is a record's address, is good while it stands here.
extern std::set<std::unique_ptr<VYRAProbe_t>, VYRAProbeOrder> gProbes;

// The host's numbers of the probes that were destroyed here, to be used again.
extern std::set<int> gFreeProbes;

// A plugin leaves: its probes go.
void VYRASceneryDestroyProbesOf(VYRAPluginID plugin);
