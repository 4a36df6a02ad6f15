// The models that are loaded, each once, however often it was asked for.
#pragma once

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "world/scenery/BackgroundLoader.h"

namespace sim::world {

// Its address stays until its last load is released.
struct SceneryObject {
  std::string path;  // as it was asked for
  std::shared_ptr<const ObjectModel> model;
  int loads = 0;        // that were not released yet
  long long draws = 0;  // since it was loaded
};

class ObjectStore {
 public:
  // What comes of a load: the object, or null and why there is none.
  struct Result {
    std::string path;
    SceneryObject* object;
    std::string problem;
  };
  using Completion = std::function<void(const Result& result)>;

  // systemFolder: ends in "/". Paths of objects are relative to it, unless they are absolute.
  void SetFolder(const std::string& systemFolder) { folder = systemFolder; }

  Result Load(const std::string& path);

  // The model is read on another thread; the completion is called by FinishLoads.
  void LoadInBackground(const std::string& path, Completion completion);

  // Completes the loads for which this is the fifth call since they were asked for, in the order of asking.
  // It waits for a model that is not yet read, so that a flight is the same each time.
  void FinishLoads();

  // Completes all that are under way, and what they lead to.
  void FinishAllLoads();

  // Takes a load back, and says of which path; empty when there is no object at this address.
  std::string Release(const void* object);

  // The object at an address, or null.
  SceneryObject* Find(const void* object);

  // Loads that were not released yet; an object that was loaded twice counts twice.
  int CountLoads() const;
  int CountPendingLoads() const { return static_cast<int>(pending.size()); }

  // Reads all models anew; returns what is wrong, one line each. A damaged one stays as it is.
  std::vector<std::string> Reload();

 private:
  struct Pending {
    std::string path;
    Completion completion;
    std::future<LoadedModel> model;
    int callsLeft;
  };

  std::string FileOf(const std::string& path) const;
  SceneryObject* FindByPath(const std::string& path);
  Result Add(const std::string& path, const LoadedModel& loaded);
  void Finish(Pending& load);

  std::string folder;
  std::list<SceneryObject> objects;
  std::unordered_map<const void*, SceneryObject*> byAddress;  // any pointer may be asked for, and often is
  std::vector<Pending> pending;
  BackgroundLoader loader;
};

}  // namespace sim::world
