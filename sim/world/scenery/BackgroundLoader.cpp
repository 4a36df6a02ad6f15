#include "world/scenery/BackgroundLoader.h"

#include <exception>
#include <utility>

namespace sim::world {

LoadedModel LoadModel(const std::string& fileName) {
  try {
    return {.model = std::make_shared<const ObjectModel>(ReadObjectModel(fileName)), .problem = ""};
  } catch (const std::exception& error) {
    return {.model = nullptr, .problem = error.what()};
  }
}

BackgroundLoader::~BackgroundLoader() {
  {
    const std::scoped_lock lock(mutex);
    isOver = true;
  }
  somethingToDo.notify_one();
  if (thread.joinable()) thread.join();
}

std::future<LoadedModel> BackgroundLoader::Start(const std::string& fileName) {
  Job job{.fileName = fileName, .result = {}};
  std::future<LoadedModel> result = job.result.get_future();
  {
    const std::scoped_lock lock(mutex);
    jobs.push_back(std::move(job));
    if (!thread.joinable()) thread = std::thread([this] { Work(); });
  }
  somethingToDo.notify_one();
  return result;
}

void BackgroundLoader::Work() {
  while (true) {
    std::unique_lock lock(mutex);
    somethingToDo.wait(lock, [this] { return isOver || !jobs.empty(); });
    if (isOver) return;
    Job job = std::move(jobs.front());
    jobs.pop_front();
    lock.unlock();
    job.result.set_value(LoadModel(job.fileName));
  }
}

}  // namespace sim::world
