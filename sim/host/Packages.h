// What brings plugins of its own: the user's aircraft and packages of scenery, as the library hears of them.
#pragma once

#include <string>

namespace sim {

// What came of it, for a reader.
struct PackageOutcome {
  bool succeeded;
  std::string text;
};

// Gives plane 0 the description of this file, and the model that it names; an aircraft that was loaded before
// is unloaded first. The text says which plugins came with it, or what is wrong with the files: nothing has
// changed then, and the log has it, too.
PackageOutcome LoadUserAircraft(const std::string& modelPath);

// To be called only while an aircraft is loaded. The result says which plugins went with it.
std::string UnloadUserAircraft();

bool IsUserAircraftLoaded();

// Makes a package of scenery known, by its folder, which ends in "/". The result says which plugins came with
// it.
std::string LoadScenery(const std::string& folder);

// Closes one again: its objects are found no more, and its plugins are disabled until it is loaded again.
std::string UnloadScenery(const std::string& folder);

}  // namespace sim
