// Why a module was not loaded, in words, and which modules lie where nobody looks for them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "report/Report.h"

namespace sim {

// The cause, from the module's file and from the system's text for it, where there is one.
std::string ExplainFailedOpening(const std::string& path, std::string_view systemText);

// The cause that a module was opened, and has no start function that could be called.
std::string ExplainMissingStart(const std::string& path);

// What lies in a folder of plugins, and is not looked at although it looks like a module: in a wrong place in
// its plugin folder, or loose under another ending. Loose modules are loaded from the main folder alone.
std::vector<LoadFailure> FindMisplacedModules(const std::string& folder, bool takesLooseModules);

// The modules that are looked for in a folder of plugins and are there.
std::vector<std::string> FindModules(const std::string& folder, bool takesLooseModules);

}  // namespace sim
