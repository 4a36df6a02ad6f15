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

  // The file from which a module was opened, by its place in the order in which all are gone through; -1 for
  // none of them.
  static int PlaceOf(const void* module);
  // Of the last one that every start loads. The folders behind it hold files that other events may have had
  // loaded before.
  int PlaceOfLast() const { return size == kMany ? 4 : 6; }
  static bool IsOfAircraft(int place);
  enum Place { kNewer = 7, kOlder };  // the two modules of one folder

  Size size = kMany;  // how many plugins the host has in its own folder

 private:
  int maker;
  std::string root;
};

extern Folders gFolders;

}  // namespace calls
