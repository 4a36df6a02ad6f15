// Characters drawn by FreeType, side by side in one texture.
#pragma once

#include <GL/gl.h>

#include <unordered_map>

#include "view/Font.h"

namespace sim {

// All functions need the context in which it was made to be the current one.
class GlyphAtlas {
 public:
  static constexpr int kSide = 1'024;  // pixels

  GlyphAtlas();
  ~GlyphAtlas();
  GlyphAtlas(const GlyphAtlas&) = delete;
  GlyphAtlas& operator=(const GlyphAtlas&) = delete;

  GLuint Texture() const { return texture; }

  // Draws the characters of ASCII in all fonts, so many pixels to one of the screen's, from 1 on: one that is
  // added while a frame is drawn has to wait for it. Nothing when they are that dense already.
  void SetDensity(int pixels);
  int Density() const { return density; }

  // The left and top pixel of a character's ink in the texture, and where it lies on a line: so many times
  // denser than the screen. When there is no room left, all others are forgotten: so draw a character before
  // the next one is asked for.
  struct Spot {
    int textureLeft = 0;
    int textureTop = 0;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
  };
  Spot SpotOf(const Font& font, char32_t character);

 private:
  Spot Add(const Font& font, char32_t character);
  void Forget();

  GLuint texture = 0;
  int density = 0;
  int shelfLeft = 0;  // where the next character goes
  int shelfTop = 0;
  int shelfHeight = 0;
  std::unordered_map<const Font*, std::unordered_map<char32_t, Spot>> spots;
};

}  // namespace sim
