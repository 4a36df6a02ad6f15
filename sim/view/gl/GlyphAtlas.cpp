#include "view/gl/GlyphAtlas.h"

#include <algorithm>
#include <vector>

#include "view/Fonts.h"

namespace sim {

GlyphAtlas::GlyphAtlas() {
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, kSide, kSide, 0, GL_ALPHA, GL_UNSIGNED_BYTE, nullptr);
  for (int font = 0; font < kFontCount; ++font)
    for (char32_t character = U' '; character < 0x7F; ++character) Add(FontOf(font), character);
  glBindTexture(GL_TEXTURE_2D, 0);
}

GlyphAtlas::~GlyphAtlas() { glDeleteTextures(1, &texture); }

GlyphAtlas::Corner GlyphAtlas::CornerOf(const Font& font, char32_t character) {
  auto& ofFont = corners[&font];
  const auto found = ofFont.find(character);
  return found != ofFont.end() ? found->second : Add(font, character);
}

// Characters stand on shelves, each as high as its highest one.
GlyphAtlas::Corner GlyphAtlas::Add(const Font& font, char32_t character) {
  const Glyph& glyph = font.GlyphOf(character);
  if (shelfLeft + glyph.width > kSide) {
    shelfTop += shelfHeight + 1;
    shelfLeft = 0;
    shelfHeight = 0;
  }
  if (shelfTop + glyph.height > kSide) {
    corners.clear();
    shelfLeft = shelfTop = shelfHeight = 0;
  }
  const Corner corner{shelfLeft, shelfTop};
  const std::vector<unsigned char> ink = font.Ink(character);
  glBindTexture(GL_TEXTURE_2D, texture);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  if (!ink.empty())
    glTexSubImage2D(GL_TEXTURE_2D, 0, corner.left, corner.top, glyph.width, glyph.height, GL_ALPHA,
                    GL_UNSIGNED_BYTE, ink.data());
  shelfLeft += glyph.width + 1;
  shelfHeight = std::max(shelfHeight, glyph.height);
  corners[&font][character] = corner;
  return corner;
}

}  // namespace sim
