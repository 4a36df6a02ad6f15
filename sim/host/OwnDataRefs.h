// The simulator's own datarefs: one table, from which they are published and described.
#pragma once

#include <vector>

#include "host/datarefs/DataRefRow.h"

namespace sim {

// In the order of their names.
const std::vector<DataRefRow>& OwnDataRefs();

// Publishes them. Called once, before the library is started, so that the simulator owns them.
void RegisterSimulatorDataRefs();

}  // namespace sim
