// The library's handle of an object is its address.
#include "host/ObjectServices.h"

#include <fmt/core.h>

#include <filesystem>
#include <string>

#include "report/Activity.h"
#include "report/Log.h"
#include "report/News.h"
#include "view/DrawnScene.h"
#include "view/gl/FramePainter.h"
#include "world/World.h"

namespace sim {
namespace {

std::string FileName(const std::string& path) { return std::filesystem::path(path).filename().string(); }

// What every load ends in.
VYRAObjectRef Note(const world::ObjectStore::Result& result) {
  if (result.object != nullptr)
    ++gActivity.objectsLoaded;
  else
    gLog->Write(fmt::format("Failed: {}\n", result.problem));
  return result.object;
}

VYRAObjectRef Load(const char* path) { return path != nullptr ? Note(gWorld.objects.Load(path)) : nullptr; }

void LoadAsync(const char* path, VYRAObjectLoaded_f completion, void* delivery) {
  gWorld.objects.LoadInBackground(path != nullptr ? path : "", [=](const world::ObjectStore::Result& result) {
    const VYRAObjectRef object = Note(result);
    gNews.push_back(fmt::format("object {} {}", FileName(result.path),
                                object != nullptr ? "loaded in the background" : "could not be loaded"));
    completion(object, delivery);
  });
}

void Unload(VYRAObjectRef object) {
  const std::string path = gWorld.objects.Release(object);
  if (path.empty()) return;
  ++gActivity.objectsReleased;
  gNews.push_back(fmt::format("object {} released", FileName(path)));
}

void Draw(VYRAObjectRef reference, int lighting, int earthRelative, float x, float y, float z, float heading,
          float pitch, float roll) {
  world::SceneryObject* const object = gWorld.objects.Find(reference);
  if (object == nullptr) return;
  ++gActivity.objectsDrawn;
  ++object->draws;
  gDrawnScene.objects.push_back(
      {.model = object->model,
       .position = {static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)},
       .angles = {.heading = static_cast<double>(heading),
                  .pitch = static_cast<double>(pitch),
                  .roll = static_cast<double>(roll)},
       .lighting = lighting,
       .isEarthRelative = earthRelative != 0});
  if (IsPainting()) gPainter->DrawObject(gDrawnScene.objects.back());
}

}  // namespace

void FillObjectServices(VYRAHostServices& services) {
  services.LoadObject = Load;
  services.LoadObjectAsync = LoadAsync;
  services.UnloadObject = Unload;
  services.DrawObjects = Draw;
}

void FinishLoads() { gWorld.objects.FinishLoads(); }

void FinishAllLoads() { gWorld.objects.FinishAllLoads(); }

}  // namespace sim
