#define GL_GLEXT_PROTOTYPES
#include "view/gl/SurfacePainter.h"

#include <GL/glext.h>

#include <initializer_list>

#include "view/Fonts.h"
#include "view/TextLayout.h"

namespace sim {
namespace {

// The state that a surface is drawn with, for as long as this lasts, whatever a plugin has set before.
class StSurfaceState {
 public:
  StSurfaceState() {
    glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT | GL_TEXTURE_BIT | GL_POLYGON_BIT);
    glActiveTexture(GL_TEXTURE0);
    for (const GLenum switchedOff : std::initializer_list<GLenum>{GL_DEPTH_TEST, GL_LIGHTING, GL_FOG,
                                                                  GL_CULL_FACE, GL_TEXTURE_2D, GL_ALPHA_TEST})
      glDisable(switchedOff);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  }
  ~StSurfaceState() { glPopAttrib(); }
  StSurfaceState(const StSurfaceState&) = delete;
  StSurfaceState& operator=(const StSurfaceState&) = delete;
};

void DrawGlyph(const PlacedGlyph& placed, const GlyphAtlas::Spot& spot, int density) {
  constexpr double kPixel = 1.0 / GlyphAtlas::kSide;
  const double unit = 1.0 / density;
  const double left = placed.x + spot.left * unit;
  const double top = placed.y + spot.top * unit;
  const double right = left + spot.width * unit;
  const double bottom = top - spot.height * unit;
  const double textureLeft = spot.textureLeft * kPixel;
  const double textureTop = spot.textureTop * kPixel;
  const double textureRight = (spot.textureLeft + spot.width) * kPixel;
  const double textureBottom = (spot.textureTop + spot.height) * kPixel;
  glBegin(GL_QUADS);
  glTexCoord2d(textureLeft, textureTop);
  glVertex2d(left, top);
  glTexCoord2d(textureLeft, textureBottom);
  glVertex2d(left, bottom);
  glTexCoord2d(textureRight, textureBottom);
  glVertex2d(right, bottom);
  glTexCoord2d(textureRight, textureTop);
  glVertex2d(right, top);
  glEnd();
}

void DrawQuad(const Rectangle& box) {
  glBegin(GL_QUADS);
  glVertex2i(box.left, box.bottom);
  glVertex2i(box.right, box.bottom);
  glVertex2i(box.right, box.top);
  glVertex2i(box.left, box.top);
  glEnd();
}

}  // namespace

void SurfacePainter::DrawText(std::string_view text, int x, int y, const TextStyle& style) {
  const StSurfaceState state;
  const Font& font = FontOf(style.font);
  glEnable(GL_TEXTURE_2D);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glColor3fv(style.colour.data());
  LayOut(font, text, x, y, style.wrapWidth, [&](const PlacedGlyph& placed) {
    if (placed.isBreak || placed.glyph.width == 0) return;
    const GlyphAtlas::Spot spot = atlas.SpotOf(font, placed.character);
    glBindTexture(GL_TEXTURE_2D, atlas.Texture());
    DrawGlyph(placed, spot, atlas.Density());
  });
}

void SurfacePainter::DrawBox(const Rectangle& box) const {
  const StSurfaceState state;
  glColor4f(0.04F, 0.06F, 0.09F, 0.74F);
  DrawQuad(box);
  // A thin light edge, inside of the box.
  glColor4f(1.0F, 1.0F, 1.0F, 0.22F);
  DrawQuad({box.left, box.bottom, box.right, box.bottom + 1});
  DrawQuad({box.left, box.top - 1, box.right, box.top});
  DrawQuad({box.left, box.bottom + 1, box.left + 1, box.top - 1});
  DrawQuad({box.right - 1, box.bottom + 1, box.right, box.top - 1});
}

}  // namespace sim
