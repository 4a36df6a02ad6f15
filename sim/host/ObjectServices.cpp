// The library's handle of an object is its address.
#include "host/ObjectServices.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "host/FlightBoard.h"
#include "report/Activity.h"
#include "report/News.h"
#include "world/Objects.h"

namespace sim {
namespace {

constexpr int kFramesOfLoad = 5;

struct PendingLoad {
  std::string path;
  VYRAObjectLoaded_f completion;
  void* delivery;
  int framesLeft;
};

std::vector<PendingLoad> gPendingLoads;

VYRAObjectRef Load(const char* path) {
  SceneryObject* const object = path != nullptr ? AddLoad(path) : nullptr;
  if (object != nullptr) ++gActivity.objectsLoaded;
  return object;
}

void Unload(VYRAObjectRef object) {
  const std::string path = ReleaseLoad(object);
  if (path.empty()) return;
  ++gActivity.objectsReleased;
  gNews.push_back(fmt::format("object {} released", ObjectFile(path).filename().string()));
}

void Finish(const PendingLoad& load) {
  const VYRAObjectRef object = Load(load.path.c_str());
  gNews.push_back(fmt::format("object {} {}", ObjectFile(load.path).filename().string(),
                              object != nullptr ? "loaded in the background" : "could not be loaded"));
  CallHook("completion of LoadObjectAsync", load.completion, object, load.delivery);
}

}  // namespace

void FillObjectServices(VYRAHostServices& services) {
  services.LoadObject = Load;
  services.LoadObjectAsync = [](const char* path, VYRAObjectLoaded_f completion, void* delivery) {
    gPendingLoads.push_back({path != nullptr ? path : "", completion, delivery, kFramesOfLoad});
  };
  services.UnloadObject = Unload;
  services.DrawObjects = [](VYRAObjectRef, int, int, float, float, float, float, float, float) {
    ++gActivity.objectsDrawn;
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

}  // namespace sim
