// Scenery objects. An object is any file of the simulator folder; loading it checks that it is there.
#pragma once

#include <filesystem>
#include <string>

namespace sim {

struct SceneryObject {
  std::string path;  // as it was asked for
  int loads = 0;     // that were not released yet
};

// The file that an object's path names: relative to the simulator folder unless it is absolute.
std::filesystem::path ObjectFile(const std::string& path);

// The object of this path, with one load more; null when there is no such file. Its address stays until its
// last load is released.
SceneryObject* AddLoad(const std::string& path);

// Takes a load back, and says of which path; empty when there is no object at this address.
std::string ReleaseLoad(const void* object);

// Loads that were not released yet; an object that was loaded twice counts twice.
int LoadedObjects();

}  // namespace sim
