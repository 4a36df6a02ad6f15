// What a module's file says of itself, without opening it as a library: why it cannot be one, and what became
// of its start function.
#pragma once

#include <string>

namespace sim {

// Why the file cannot be loaded, in words ("it is a 32-bit module"); empty when the file itself is no reason.
std::string FileFault(const std::string& path);

// How a module has VyPluginStart.
enum class StartFunction { Exported, Hidden, Mangled, None };

// None also for what is no module at all.
StartFunction FindStartFunction(const std::string& path);

}  // namespace sim
