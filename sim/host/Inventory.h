// What the library knows of all plugins' datarefs, windows and handlers, as lists of this moment.
#pragma once

#include <vector>

#include "VYRAWatch.h"
#include "host/datarefs/DataRefRow.h"

namespace sim {

// In the order of their names.
std::vector<VYRADataRefInfo> PublishedDataRefs();

// Of one of the simulator's own; null for others.
const DataRefRow* OwnDataRefRow(const VYRADataRefInfo& dataRef);

// The front-most first.
std::vector<VYRAWindowInfo> PluginWindows();

// In the order in which they are called.
std::vector<VYRACommandHandlerInfo> CommandHandlers(VYRACommandRef command);

}  // namespace sim
