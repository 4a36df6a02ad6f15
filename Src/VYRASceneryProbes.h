// Terrain probes: which plugin made which, and the host's probes behind them, which are reused.
#pragma once

#include <cstdint>
#include <set>

#include "VYRAChain.h"
#include "VYRARecordPool.h"
#include "VYRAScenery.h"

// A handle, which is a record's address, is good while the pool holds it.
struct VYRAProbe_t : VYRAPooled_t<VYRAProbe_t> {
  VYRAProbe_t(VYRAPluginID plugin, std::int32_t probeType, std::int32_t index)
      : owner(plugin), type(probeType), hostIndex(index) {}

  VYRAPluginID owner;
  std::int32_t type;
  std::int32_t hostIndex;
  VYRALinks<VYRAProbe_t> owned;
};

// The host's numbers of the probes that were destroyed here, to be used again.
extern std::set<int> gFreeProbes;

// A plugin leaves: its probes go.
void VYRASceneryDestroyProbesOf(VYRAPluginID plugin);
