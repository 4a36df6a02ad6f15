// Draws texts and boxes with OpenGL, at once. Leaves the drawing state as it finds it.
#pragma once

#include <string_view>

#include "view/Screen.h"
#include "view/gl/GlyphAtlas.h"

namespace sim {

class SurfacePainter {
 public:
  // How many pixels there are to one of the screen's, from 1 on: letters are as fine as the display.
  void SetDensity(int pixels) { atlas.SetDensity(pixels); }
  void DrawText(std::string_view text, int x, int y, const TextStyle& style);
  void DrawBox(const Rectangle& box) const;

 private:
  GlyphAtlas atlas;
};

}  // namespace sim
