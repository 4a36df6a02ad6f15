// What brings plugins of its own: the user's aircraft and packages of scenery, as the library hears of them.
#pragma once

#include <string>

namespace sim {

// Gives plane 0 this model; an aircraft that was loaded before is unloaded first. The result says which
// plugins came with it.
std::string LoadUserAircraft(const std::string& modelPath);

// To be called only while an aircraft is loaded. The result says which plugins went with it.
std::string UnloadUserAircraft();

bool IsUserAircraftLoaded();

// Makes a package of scenery known, by its folder, which ends in "/". The result says which plugins came with
// it.
std::string LoadScenery(const std::string& folder);

}  // namespace sim
