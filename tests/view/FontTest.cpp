// Text measured, held against what FreeType itself says of the same file.
#include <ft2build.h>
#include <gtest/gtest.h>
#include FT_FREETYPE_H

#include "InputError.h"
#include "host/ScreenServices.h"
#include "view/Fonts.h"

namespace {

using namespace sim;

class Face {
 public:
  Face(const char* file, unsigned pixels) {
    FT_Init_FreeType(&library);
    FT_New_Face(library, file, 0, &face);
    FT_Set_Pixel_Sizes(face, 0, pixels);
  }
  ~Face() { FT_Done_FreeType(library); }
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;

  float Width(const std::u32string& text) const {
    float width = 0.0F;
    for (const char32_t character : text) {
      FT_Load_Char(face, character, FT_LOAD_DEFAULT);
      width += static_cast<float>(face->glyph->advance.x) / 64.0F;
    }
    return width;
  }

 private:
  FT_Library library = nullptr;
  FT_Face face = nullptr;
};

VYRAHostServices Services() {
  VYRAHostServices services{};
  FillScreenServices(services);
  return services;
}

float Measure(int font, const std::string& text) {
  return Services().MeasureString(font, text.c_str(), static_cast<int>(text.size()));
}

TEST(Font, TextIsAsWideAsFreeTypeSays) {
  const Face sans(VYRA_FONT_FOLDER "/DejaVuSans.ttf", 13);
  EXPECT_EQ(Measure(0, "Will it fit, Mrs. Fjord?"), sans.Width(U"Will it fit, Mrs. Fjord?"));
  EXPECT_EQ(Measure(0, "H\u00f6he \u2192 \u20ac"), sans.Width(U"H\u00f6he \u2192 \u20ac"));
  EXPECT_NE(Measure(0, "iiii"), Measure(0, "WWWW"));
  const Face bold(VYRA_FONT_FOLDER "/DejaVuSans-Bold.ttf", 17);
  EXPECT_EQ(Measure(2, "Will it fit?"), bold.Width(U"Will it fit?"));
  EXPECT_EQ(Measure(1, "iiii"), Measure(1, "WWWW"));
  EXPECT_EQ(Measure(-7, "any"), Measure(0, "any")) << "a font that there is not is the first one";
}

TEST(Font, OnlySoManyBytesAreMeasuredAndNoneBehindTheEnd) {
  const auto measure = Services().MeasureString;
  EXPECT_EQ(measure(0, "abcdef", 3), Measure(0, "abc"));
  EXPECT_EQ(measure(0, "abc", 1'000), Measure(0, "abc"));
  EXPECT_EQ(measure(0, "abc", 0), 0.0F);
  EXPECT_EQ(measure(0, "abc", -1), 0.0F);
  EXPECT_EQ(measure(0, nullptr, 3), 0.0F);
}

// A byte that is no UTF-8, a character cut in the middle, one that is written too long, half of a pair.
TEST(Font, BrokenBytesAreAsWideAsTheCharacterForWhatCannotBeShown) {
  const float unknown = Measure(0, "\uFFFD");
  EXPECT_GT(unknown, 0.0F);
  EXPECT_EQ(Measure(0, "\xFF"), unknown);
  EXPECT_EQ(Measure(0, "\xC3"), unknown);
  EXPECT_EQ(Measure(0, "\xC3 "), unknown + Measure(0, " "));
  EXPECT_EQ(Measure(0, "\xC0\x80"), 2 * unknown);
  EXPECT_EQ(Measure(0, "\xED\xA0\x80"), 3 * unknown);
  EXPECT_EQ(Measure(0, "\xF4\x90\x80\x80"), 4 * unknown);
}

TEST(Font, DimensionsAreThoseOfDigitsAndLines) {
  const auto dimensions = Services().GetFontDimensions;
  for (int font = 0; font < kFontCount; ++font) {
    int width = 0;
    int height = 0;
    int digitsOnly = -1;
    dimensions(font, &width, &height, &digitsOnly);
    EXPECT_EQ(static_cast<float>(width), Measure(font, "0"));
    EXPECT_EQ(static_cast<float>(10 * width), Measure(font, "1234567890"));
    EXPECT_GE(height, FontOf(font).GlyphOf(U'8').height);
    EXPECT_EQ(digitsOnly, Measure(font, "x") == 0.0F ? 1 : 0);
  }
  dimensions(0, nullptr, nullptr, nullptr);
}

TEST(Font, MissingFileIsToldWithItsPackage) {
  try {
    const Font font("/no/such/font.ttf", 13, false);
    FAIL() << "there is no such font";
  } catch (const InputError& error) {
    EXPECT_STREQ(error.what(),
                 "cannot read the font /no/such/font.ttf. On Debian: apt-get install fonts-dejavu-core");
  }
}

}  // namespace
