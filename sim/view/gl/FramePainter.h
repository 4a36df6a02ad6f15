// Draws a frame with OpenGL, into whatever the current context draws into: an image in memory, or a window.
// Who made the context is not asked. The drawing steps tell it when to draw what.
#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <string>

#include "view/DrawnScene.h"
#include "view/Screen.h"
#include "view/gl/ScenePainter.h"
#include "view/gl/SurfacePainter.h"

namespace sim {

// A screen's size, and that of what it is drawn into: on a display of high density a unit of the screen is
// several pixels.
struct FrameSize {
  int width = 0;
  int height = 0;
  int pixelWidth = 0;
  int pixelHeight = 0;
};

class FramePainter {
 public:
  // The simulator's own textures, whose numbers are 1 to 3: of the panel, the aircraft's paint, the light
  // maps.
  static constexpr int kOwnTextures = 3;

  FramePainter();

  // A frame begins, so large and seen from there. One that nobody looks at is not drawn: what plugins draw by
  // themselves is all that there is of it.
  void Begin(const FrameSize& frameSize, const View& frameView, bool isSeen);
  void End() { isPainting = false; }
  bool IsPainting() const { return isPainting; }

  // Sets the drawing state that a plugin finds in a step: the scene's, in local metres; or the surface's, in
  // pixels.
  void SetSceneState() const;
  void SetSurfaceState() const;

  void DrawGround(const World& world);
  void DrawRunways(const World& world);
  void DrawShip(const World& world);
  void DrawPlane(const DrawnPlane& plane, const World& world);
  void DrawObject(const DrawnObject& object);
  void DrawText(std::string_view text, int x, int y, const TextStyle& style);
  void DrawBox(const Rectangle& box);

 private:
  struct OwnTextures {
    OwnTextures();
  };

  const ModelPointer& ModelOfAircraft(const std::string& descriptionFile);

  OwnTextures ownTextures;  // first of all, so that they have the first numbers
  FrameSize size;
  View view;
  bool isPainting = false;
  ScenePainter scene;
  SurfacePainter surface;
  ModelPointer plainAircraft;
  std::map<std::string, ModelPointer> aircraftModels;  // by the path of the description
};

// What the services draw with; null while there is no OpenGL.
inline FramePainter* gPainter = nullptr;

// Whether what is drawn now is to be painted.
inline bool IsPainting() { return gPainter != nullptr && gPainter->IsPainting(); }

}  // namespace sim
