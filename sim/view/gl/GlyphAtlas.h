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

  // With the characters of ASCII in all fonts: one that is added while a frame is drawn has to wait for it.
  GlyphAtlas();
  ~GlyphAtlas();
  GlyphAtlas(const GlyphAtlas&) = delete;
  GlyphAtlas& operator=(const GlyphAtlas&) = delete;

  GLuint Texture() const { return texture; }

  // The left and top pixel of a character's ink in the texture. When there is no room left, all others are
  // forgotten: so draw a character before the next one is asked for.
  struct Corner {
    int left;
    int top;
  };
  Corner CornerOf(const Font& font, char32_t character);

 private:
  Corner Add(const Font& font, char32_t character);

  GLuint texture = 0;
  int shelfLeft = 0;  // where the next character goes
  int shelfTop = 0;
  int shelfHeight = 0;
  std::unordered_map<const Font*, std::unordered_map<char32_t, Corner>> corners;
};

}  // namespace sim
