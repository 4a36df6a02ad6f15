// What to tell the reader at the end of a frame: services and hooks note it while plugins run.
#pragma once

#include <string>
#include <vector>

namespace sim {

inline std::vector<std::string> gNews;

}  // namespace sim
