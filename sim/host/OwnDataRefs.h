// The simulator's own datarefs; sim/README.md lists them.
#pragma once

namespace sim {

// Publishes them over gWorld. Called once, before the library is started, so that the simulator owns them.
void RegisterSimulatorDataRefs();

// Publishes an int that plugins may write: 0 or 1, anything but 0 counting as 1.
void PublishSwitch(const char* name, int& value);

}  // namespace sim
