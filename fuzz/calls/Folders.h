// Files for the library to load: folders of plugins as simulators have them, made once in a temporary place.
// Some modules lie there twice, under two names, through links.
#pragma once

#include <string>

namespace calls {

class Folders {
 public:
  Folders();
  ~Folders();
  Folders(const Folders&) = delete;
  Folders& operator=(const Folders&) = delete;

  enum Size { kNone, kFew, kMany };

  std::string SystemPath() const {
    return root + (size == kNone ? "none/" : size == kFew ? "few/" : "many/");
  }
  std::string PlanePath() const { return root + "many/Aircraft/wing.acf"; }
  std::string SceneryPath() const { return root + "many/Scenery/"; }

  Size size = kMany;  // how many plugins the host has in its own folder

 private:
  int maker;
  std::string root;
};

extern Folders gFolders;

}  // namespace calls
