// The colour of each plugin, the same in all panels, and mostly the same in each run.
#pragma once

#include <cstdint>
#include <string_view>

namespace sim {

// As Dear ImGui packs colours, opaque. Two plugins have the same one only when there are more of them than
// colours. Once a plugin was given a colour it keeps it.
std::uint32_t PluginColour(std::string_view signature);

}  // namespace sim
