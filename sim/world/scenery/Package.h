// A scenery package: a folder with objects, and an index that says by which virtual path each is found, and
// where on earth.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "world/earth/Region.h"

namespace sim::world {

struct PackageObject {
  std::string virtualPath;  // as plugins ask for it: "landmarks/lighthouse.obj"
  std::string file;         // of the package, relative to the simulator folder
  Region region;            // where it is to be found; the whole earth without one
};

struct Package {
  std::string name;
  std::string folder;  // relative to the simulator folder, ending in "/"
  std::vector<PackageObject> objects;
};

// Reads the text of an index. folder: see Package. isFile: tells of a path relative to the simulator folder
// whether there is such a file. Throws FileError.
Package ParsePackage(const std::string& text, const std::string& fileName, const std::string& folder,
                     const std::function<bool(const std::string& path)>& isFile);

// All packages of a simulator folder: those below "Scenery/" with a file package.json, by the order of their
// names.
class SceneryLibrary {
 public:
  // systemFolder: ends in "/".
  explicit SceneryLibrary(std::string systemFolder) : root(std::move(systemFolder)) {}

  // Reads all indexes anew. Returns what is wrong with them, one line each; of a package whose index is
  // damaged, what was read before stays.
  std::vector<std::string> Read();

  // Leaves the package in this folder, relative to the simulator folder and ending in "/", out from now on,
  // or reads its index again. Returns what is wrong, as Read does.
  std::vector<std::string> SetOpen(const std::string& folder, bool isOpen);

  const std::vector<Package>& Packages() const { return packages; }

  // The files of all objects with this virtual path whose region has the place in it.
  std::vector<std::string> Lookup(const std::string& virtualPath, const Place& place) const;

 private:
  std::string root;
  std::vector<Package> packages;
  std::set<std::string> closed;  // folders
};

}  // namespace sim::world
