// The simulator's own datarefs; sim/README.md lists them.
#pragma once

namespace sim {

// Publishes them over gWorld. Called once, before the library is started, so that the simulator owns them.
void RegisterSimulatorDataRefs();

}  // namespace sim
