// Where the characters of a text stand.
#pragma once

#include <algorithm>
#include <string_view>

#include "view/Font.h"
#include "view/Utf8.h"

namespace sim {

// A character in its place.
struct PlacedGlyph {
  char32_t character;
  Glyph glyph;
  int x;                   // of the pen, in pixels from the screen's left edge
  int y;                   // of the baseline, from its bottom
  std::string_view bytes;  // of the text
  bool isBreak;            // a line's end, and not drawn
};

// The text up to its first space or line end.
inline std::string_view FirstWord(std::string_view text) {
  return text.substr(0, std::min(text.find_first_of(" \n"), text.size()));
}

// Calls visit(PlacedGlyph) for each character in order. Line ends in the text begin a new line, and so does a
// word that does not fit into wrapWidth pixels, in place of the space before it; 0 for any width.
template <class Visit>
void LayOut(const Font& font, std::string_view text, int x, int y, int wrapWidth, Visit visit) {
  int penX = x;
  int penY = y;
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t character = TakeCharacter(text);
    const Glyph& glyph = font.GlyphOf(character);
    const std::string_view bytes = before.substr(0, before.size() - text.size());
    const bool isWrapped = character == U' ' && wrapWidth > 0 &&
                           penX + glyph.advance + font.Width(FirstWord(text)) > x + wrapWidth;
    const bool isBreak = character == U'\n' || isWrapped;
    visit(PlacedGlyph{character, glyph, penX, penY, bytes, isBreak});
    penX = isBreak ? x : penX + glyph.advance;
    if (isBreak) penY -= font.LineHeight();
  }
}

}  // namespace sim
