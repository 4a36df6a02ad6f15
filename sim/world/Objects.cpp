// Every load of a path gives the same object, which lives as long as one load of it does.
#include "world/Objects.h"

#include <algorithm>
#include <list>

#include "world/World.h"

namespace sim {
namespace {

std::list<SceneryObject> gObjects;

}  // namespace

std::filesystem::path ObjectFile(const std::string& path) {
  return gWorld.systemPath / std::filesystem::path(path);
}

SceneryObject* AddLoad(const std::string& path) {
  if (!std::filesystem::is_regular_file(ObjectFile(path))) return nullptr;
  auto object = std::ranges::find(gObjects, path, &SceneryObject::path);
  if (object == gObjects.end()) object = gObjects.insert(gObjects.end(), {path});
  ++object->loads;
  return &*object;
}

std::string ReleaseLoad(const void* object) {
  const auto found = std::ranges::find_if(gObjects, [&](const SceneryObject& one) { return &one == object; });
  if (found == gObjects.end()) return "";
  std::string path = found->path;
  if (--found->loads == 0) gObjects.erase(found);
  return path;
}

int LoadedObjects() {
  int count = 0;
  for (const SceneryObject& object : gObjects) count += object.loads;
  return count;
}

}  // namespace sim
