#include "world/scenery/ObjectStore.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

namespace sim::world {
namespace {

constexpr int kCallsOfLoad = 5;

}  // namespace

std::string ObjectStore::FileOf(const std::string& path) const {
  return (std::filesystem::path(folder) / path).string();
}

SceneryObject* ObjectStore::FindByPath(const std::string& path) {
  const auto found = std::ranges::find(objects, path, &SceneryObject::path);
  return found != objects.end() ? &*found : nullptr;
}

SceneryObject* ObjectStore::Find(const void* object) {
  const auto found = byAddress.find(object);
  return found != byAddress.end() ? found->second : nullptr;
}

ObjectStore::Result ObjectStore::Add(const std::string& path, const LoadedModel& loaded) {
  SceneryObject* object = FindByPath(path);
  if (object == nullptr) {
    if (loaded.model == nullptr) return {path, nullptr, loaded.problem};
    object = &objects.emplace_back(SceneryObject{.path = path, .model = loaded.model});
    byAddress[object] = object;
  }
  ++object->loads;
  return {path, object, ""};
}

ObjectStore::Result ObjectStore::Load(const std::string& path) {
  return Add(path, FindByPath(path) != nullptr ? LoadedModel{} : LoadModel(FileOf(path)));
}

void ObjectStore::LoadInBackground(const std::string& path, Completion completion) {
  pending.push_back({path, std::move(completion), loader.Start(FileOf(path)), kCallsOfLoad});
}

void ObjectStore::Finish(Pending& load) { load.completion(Add(load.path, load.model.get())); }

void ObjectStore::FinishLoads() {
  for (Pending& load : pending) --load.callsLeft;
  const auto due = std::stable_partition(pending.begin(), pending.end(),
                                         [](const Pending& load) { return load.callsLeft > 0; });
  // Taken out first: a completion may lead to the next load.
  std::vector<Pending> finished(std::make_move_iterator(due), std::make_move_iterator(pending.end()));
  pending.erase(due, pending.end());
  for (Pending& load : finished) Finish(load);
}

void ObjectStore::FinishAllLoads() {
  while (!pending.empty())
    for (std::vector<Pending> all = std::exchange(pending, {}); Pending & load : all) Finish(load);
}

std::string ObjectStore::Release(const void* object) {
  SceneryObject* const found = Find(object);
  if (found == nullptr) return "";
  std::string path = found->path;
  if (--found->loads > 0) return path;
  byAddress.erase(found);
  objects.remove_if([=](const SceneryObject& one) { return &one == found; });
  return path;
}

int ObjectStore::CountLoads() const {
  int count = 0;
  for (const SceneryObject& object : objects) count += object.loads;
  return count;
}

std::vector<std::string> ObjectStore::Reload() {
  std::vector<std::string> problems;
  for (SceneryObject& object : objects) {
    LoadedModel loaded = LoadModel(FileOf(object.path));
    if (loaded.model != nullptr)
      object.model = std::move(loaded.model);
    else
      problems.push_back(loaded.problem);
  }
  return problems;
}

}  // namespace sim::world
