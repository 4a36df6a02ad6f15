// The services that load and save the simulator's own files: the flight plan is type 1, the situation of the
// user's aircraft type 2. Paths are relative to the simulator folder, unless they are absolute. What goes
// wrong is told in the log, with file and line, and changes nothing.
#pragma once

#include <string>

#include "VYRAHost.h"

namespace sim {

enum DataFileType { kFlightPlanFile = 1, kSituationFile = 2 };

void FillDataFileServices(VYRAHostServices& services);

// True when it was loaded or saved. Plugins are told of what was loaded by a message.
bool LoadDataFile(int fileType, const std::string& path);
bool SaveDataFile(int fileType, const std::string& path);

}  // namespace sim
