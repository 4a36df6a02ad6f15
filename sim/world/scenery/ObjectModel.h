// A three-dimensional model: the triangles of a Wavefront OBJ file.
#pragma once

#include <string>
#include <vector>

#include "world/Vector.h"

namespace sim::world {

// Metres: x to the right, y up, z towards the viewer, as the files have it.
struct ObjectModel {
  struct Triangle {
    int corners[3];   // into points
    float colour[3];  // red, green, blue from 0 to 1: of the material, or white
  };
  std::string fileName;  // that it was read from
  std::vector<Vector> points;
  std::vector<Triangle> triangles;

  // The smallest box around all points; both are the origin when there are none.
  Vector smallest;
  Vector largest;
};

// Reads a model: the file and the material files beside it. Throws FileError, also for a file without
// triangles. May be called from any thread.
ObjectModel ReadObjectModel(const std::string& fileName);

// The same of a text; material files are looked for in folder.
ObjectModel ParseObjectModel(const std::string& text, const std::string& fileName, const std::string& folder);

}  // namespace sim::world
