// Reads models on a thread of its own, one after the other.
#pragma once

#include <condition_variable>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "world/scenery/ObjectModel.h"

namespace sim::world {

// A model, or why there is none.
struct LoadedModel {
  std::shared_ptr<const ObjectModel> model;
  std::string problem;
};

// On the calling thread.
LoadedModel LoadModel(const std::string& fileName);

class BackgroundLoader {
 public:
  BackgroundLoader() = default;
  // Waits for the model that is being read; those behind it are not read any more.
  ~BackgroundLoader();
  BackgroundLoader(const BackgroundLoader&) = delete;
  BackgroundLoader& operator=(const BackgroundLoader&) = delete;

  // The thread begins with the first model.
  std::future<LoadedModel> Start(const std::string& fileName);

 private:
  struct Job {
    std::string fileName;
    std::promise<LoadedModel> result;
  };

  void Work();

  std::mutex mutex;  // of all below
  std::condition_variable somethingToDo;
  std::deque<Job> jobs;
  bool isOver = false;
  std::thread thread;
};

}  // namespace sim::world
