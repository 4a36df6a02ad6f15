// Draws the world with OpenGL: the sky, land and sea, the runways, the ship.
#pragma once

#include <vector>

#include "view/gl/Landscape.h"
#include "view/gl/ModelPainter.h"
#include "view/gl/View.h"
#include "world/World.h"

namespace sim {

class ScenePainter {
 public:
  ScenePainter();

  // The projection and the drawing state of the scene: local metres, with depth, without textures and light.
  void SetState(const View& view, int width, int height) const;

  void DrawSkyAndGround(const View& view, const World& world);
  void DrawRunways(const View& view, const World& world) const;
  void DrawShip(const World& world);

  ModelPainter models;

 private:
  Landscape landscape;
  ModelPointer ship;
};

}  // namespace sim
