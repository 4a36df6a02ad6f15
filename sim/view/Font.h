// A typeface in one size: how wide its characters are and what they look like, by FreeType.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct FT_FaceRec_;

namespace sim {

// A character, in pixels. Its ink is a rectangle that may reach beyond the advance.
struct Glyph {
  int advance = 0;  // from its pen position to the next one's
  int left = 0;     // from the pen position to the ink's left edge
  int top = 0;      // from the baseline up to the ink's top
  int width = 0;    // of the ink; 0 for a space
  int height = 0;
};

// What a character looks like: its ink from the top row down, 0 to 255 for each pixel, and where that lies.
// On a display of high density these are that display's pixels, several to one of a Glyph's.
struct Ink {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  std::vector<unsigned char> pixels;
};

class Font {
 public:
  // Throws InputError, naming the Debian package to install, when the file cannot be read.
  Font(const std::string& fileName, int pixels, bool hasDigitsOnly);
  ~Font();
  Font(Font&&) noexcept;
  Font& operator=(Font&&) = delete;

  // Characters that it does not have are a box; in one that has digits only they are nothing at all.
  const Glyph& GlyphOf(char32_t character) const {
    return character < latin.size() ? latin[character] : RareGlyph(character);
  }

  // Drawn at `density` times the size, from 1 on.
  Ink InkOf(char32_t character, int density) const;

  int Width(std::string_view text) const;
  int Ascent() const { return ascent; }          // of the highest characters, above the baseline
  int Descent() const { return descent; }        // of the lowest ones, below it
  int LineHeight() const { return lineHeight; }  // from a baseline to the next
  int DigitWidth() const { return GlyphOf(U'0').advance; }
  bool HasDigitsOnly() const { return digitsOnly; }

 private:
  struct FaceCloser {
    void operator()(FT_FaceRec_* opened) const;
  };

  Glyph Measure(char32_t character) const;
  const Glyph& RareGlyph(char32_t character) const;

  std::unique_ptr<FT_FaceRec_, FaceCloser> face;
  int size;  // pixels
  bool digitsOnly;
  int ascent = 0;
  int descent = 0;
  int lineHeight = 0;
  std::array<Glyph, 256> latin;
  mutable std::unordered_map<char32_t, Glyph> rare;
};

}  // namespace sim
