#include "view/gl/GlyphAtlas.h"

#include <algorithm>

#include "view/Fonts.h"

namespace sim {

GlyphAtlas::GlyphAtlas() {
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, kSide, kSide, 0, GL_ALPHA, GL_UNSIGNED_BYTE, nullptr);
  glBindTexture(GL_TEXTURE_2D, 0);
  SetDensity(1);
}

GlyphAtlas::~GlyphAtlas() { glDeleteTextures(1, &texture); }

void GlyphAtlas::SetDensity(int pixels) {
  if (pixels == density) return;
  density = pixels;
  Forget();
  for (int font = 0; font < kFontCount; ++font)
    for (char32_t character = U' '; character < 0x7F; ++character) Add(FontOf(font), character);
  glBindTexture(GL_TEXTURE_2D, 0);
}

void GlyphAtlas::Forget() {
  spots.clear();
  shelfLeft = shelfTop = shelfHeight = 0;
}

GlyphAtlas::Spot GlyphAtlas::SpotOf(const Font& font, char32_t character) {
  auto& ofFont = spots[&font];
  const auto found = ofFont.find(character);
  return found != ofFont.end() ? found->second : Add(font, character);
}

// Characters stand on shelves, each as high as its highest one.
GlyphAtlas::Spot GlyphAtlas::Add(const Font& font, char32_t character) {
  const Ink ink = font.InkOf(character, density);
  if (shelfLeft + ink.width > kSide) {
    shelfTop += shelfHeight + 1;
    shelfLeft = 0;
    shelfHeight = 0;
  }
  if (shelfTop + ink.height > kSide) Forget();
  const Spot spot{shelfLeft, shelfTop, ink.left, ink.top, ink.width, ink.height};
  glBindTexture(GL_TEXTURE_2D, texture);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  if (!ink.pixels.empty())
    glTexSubImage2D(GL_TEXTURE_2D, 0, spot.textureLeft, spot.textureTop, ink.width, ink.height, GL_ALPHA,
                    GL_UNSIGNED_BYTE, ink.pixels.data());
  shelfLeft += ink.width + 1;
  shelfHeight = std::max(shelfHeight, ink.height);
  spots[&font][character] = spot;
  return spot;
}

}  // namespace sim
