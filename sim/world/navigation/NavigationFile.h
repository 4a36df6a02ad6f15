// Navigation files: comma-separated values with a header, one navaid a line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "world/navigation/NavAid.h"

namespace sim::world {

// The columns, in any order: type, ident, name, latitude_deg, longitude_deg, elevation_m, frequency_khz,
// heading_deg. Lines that are empty or begin with # are passed over. Throws FileError.
std::vector<NavAid> ParseNavigation(std::string_view text, const std::string& fileName);

// The navaids that the simulator brings along.
std::string_view OwnNavigationText();

}  // namespace sim::world
