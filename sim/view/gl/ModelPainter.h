// Draws models of aircraft and objects with OpenGL.
#pragma once

#include <memory>
#include <unordered_map>

#include "world/Vector.h"
#include "world/aircraft/Attitude.h"
#include "world/scenery/ObjectModel.h"

namespace sim {

using ModelPointer = std::shared_ptr<const world::ObjectModel>;

// All functions need the context in which it was made to be the current one.
class ModelPainter {
 public:
  ModelPainter() = default;
  ~ModelPainter();
  ModelPainter(const ModelPainter&) = delete;
  ModelPainter& operator=(const ModelPainter&) = delete;

  // Into the scene whose view is set. Leaves the drawing state as it finds it.
  void Draw(const ModelPointer& model, const world::Vector& position, const world::EulerAngles& angles);

 private:
  // Models are kept as lists of the context; a list keeps its model, so that no other has its address.
  struct List {
    ModelPointer model;
    unsigned number;
  };
  std::unordered_map<const world::ObjectModel*, List> lists;
};

}  // namespace sim
