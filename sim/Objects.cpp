// Every load of a path gives the same object, which lives as long as one load of it does.
#include "Objects.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "World.h"

namespace sim {
namespace {

constexpr int kFramesOfLoad = 5;

struct Object {
  std::string path;
  int loads = 0;
};

struct PendingLoad {
  std::string path;
  VYRAObjectLoaded_f completion;
  void* delivery;
  int framesLeft;
};

std::list<Object> gObjects;  // their addresses are the library's handles
std::vector<PendingLoad> gPendingLoads;

std::filesystem::path FullPath(const std::string& path) {
  return gWorld.systemPath / std::filesystem::path(path);
}

VYRAObjectRef Load(const char* path) {
  if (path == nullptr || !std::filesystem::is_regular_file(FullPath(path))) return nullptr;
  auto object = std::ranges::find(gObjects, path, &Object::path);
  if (object == gObjects.end()) object = gObjects.insert(gObjects.end(), {path});
  ++object->loads;
  ++gWorld.activity.objectsLoaded;
  return &*object;
}

void Unload(VYRAObjectRef reference) {
  const auto object =
      std::ranges::find_if(gObjects, [reference](const Object& one) { return &one == reference; });
  if (object == gObjects.end()) return;
  ++gWorld.activity.objectsReleased;
  gWorld.news.push_back(fmt::format("object {} released", FullPath(object->path).filename().string()));
  if (--object->loads == 0) gObjects.erase(object);
}

void Finish(const PendingLoad& load) {
  const VYRAObjectRef object = Load(load.path.c_str());
  gWorld.news.push_back(fmt::format("object {} {}", FullPath(load.path).filename().string(),
                                    object != nullptr ? "loaded in the background" : "could not be loaded"));
  load.completion(object, load.delivery);
}

}  // namespace

void FillObjectServices(VYRAHostServices& services) {
  services.LoadObject = Load;
  services.LoadObjectAsync = [](const char* path, VYRAObjectLoaded_f completion, void* delivery) {
    gPendingLoads.push_back({path != nullptr ? path : "", completion, delivery, kFramesOfLoad});
  };
  services.UnloadObject = Unload;
  services.DrawObjects = [](VYRAObjectRef, int, int, float, float, float, float, float, float) {
    ++gWorld.activity.objectsDrawn;
  };
}

void FinishLoads() {
  for (PendingLoad& load : gPendingLoads) --load.framesLeft;
  const auto due = std::stable_partition(gPendingLoads.begin(), gPendingLoads.end(),
                                         [](const PendingLoad& load) { return load.framesLeft > 0; });
  // Taken out first: a completion calls a plugin, which may ask for the next object.
  const std::vector<PendingLoad> finished(due, gPendingLoads.end());
  gPendingLoads.erase(due, gPendingLoads.end());
  for (const PendingLoad& load : finished) Finish(load);
}

void FinishAllLoads() {
  while (!gPendingLoads.empty())
    for (const PendingLoad& load : std::exchange(gPendingLoads, {})) Finish(load);
}

int LoadedObjects() {
  int count = 0;
  for (const Object& object : gObjects) count += object.loads;
  return count;
}

}  // namespace sim
