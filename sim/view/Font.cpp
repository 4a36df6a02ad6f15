// Advances are those that FreeType gives for hinted characters, whole pixels: what is measured is what is
// drawn, and columns of text stand straight. Pairs of characters are not drawn closer together.
#include "view/Font.h"

#include <fmt/core.h>
#include <ft2build.h>

#include "InputError.h"
#include "view/Utf8.h"
#include FT_FREETYPE_H

namespace sim {
namespace {

constexpr int kUnit = 64;  // FreeType measures in parts of a pixel
constexpr std::string_view kDigitsAndSigns = "0123456789+-.:, ";

FT_Library Library() {
  static const FT_Library library = [] {
    FT_Library opened = nullptr;
    if (FT_Init_FreeType(&opened) != 0) throw InputError("FreeType cannot be used");
    return opened;
  }();
  return library;
}

// A face in another size, for as long as this lasts.
class StFaceSize {
 public:
  StFaceSize(FT_Face theFace, int pixels, int usualPixels) : face(theFace), usual(usualPixels) {
    Set(pixels);
  }
  ~StFaceSize() { Set(usual); }
  StFaceSize(const StFaceSize&) = delete;
  StFaceSize& operator=(const StFaceSize&) = delete;

 private:
  void Set(int pixels) const { FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(pixels)); }

  FT_Face face;
  int usual;
};

bool IsControl(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

}  // namespace

void Font::FaceCloser::operator()(FT_FaceRec_* opened) const { FT_Done_Face(opened); }

Font::Font(const std::string& fileName, int pixels, bool hasDigitsOnly)
    : size(pixels), digitsOnly(hasDigitsOnly) {
  FT_Face opened = nullptr;
  if (FT_New_Face(Library(), fileName.c_str(), 0, &opened) != 0 ||
      FT_Set_Pixel_Sizes(opened, 0, static_cast<FT_UInt>(pixels)) != 0)
    throw InputError(
        fmt::format("cannot read the font {}. On Debian: apt-get install fonts-dejavu-core", fileName));
  face.reset(opened);
  const FT_Size_Metrics& metrics = face->size->metrics;
  ascent = static_cast<int>(metrics.ascender / kUnit);
  descent = static_cast<int>(-metrics.descender / kUnit);
  lineHeight = static_cast<int>(metrics.height / kUnit);
  for (char32_t character = 0; character < latin.size(); ++character) latin[character] = Measure(character);
}

Font::~Font() = default;
Font::Font(Font&&) noexcept = default;

Glyph Font::Measure(char32_t character) const {
  const bool isLeftOut =
      IsControl(character) ||
      (digitsOnly &&
       (character > 0x7F || kDigitsAndSigns.find(static_cast<char>(character)) == std::string_view::npos));
  if (isLeftOut || FT_Load_Char(face.get(), character, FT_LOAD_RENDER) != 0) return {};
  const FT_GlyphSlot slot = face->glyph;
  return {.advance = static_cast<int>(slot->advance.x / kUnit),
          .left = slot->bitmap_left,
          .top = slot->bitmap_top,
          .width = static_cast<int>(slot->bitmap.width),
          .height = static_cast<int>(slot->bitmap.rows)};
}

const Glyph& Font::RareGlyph(char32_t character) const {
  const auto [found, isNew] = rare.try_emplace(character);
  if (isNew) found->second = Measure(character);
  return found->second;
}

Ink Font::InkOf(char32_t character, int density) const {
  if (GlyphOf(character).width == 0) return {};
  const StFaceSize larger(face.get(), size * density, size);
  if (FT_Load_Char(face.get(), character, FT_LOAD_RENDER) != 0) return {};
  const FT_Bitmap& bitmap = face->glyph->bitmap;
  Ink ink{.left = face->glyph->bitmap_left,
          .top = face->glyph->bitmap_top,
          .width = static_cast<int>(bitmap.width),
          .height = static_cast<int>(bitmap.rows),
          .pixels = {}};
  ink.pixels.reserve(static_cast<std::size_t>(ink.width) * static_cast<std::size_t>(ink.height));
  for (int row = 0; row < ink.height; ++row) {
    const unsigned char* const begin = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
    ink.pixels.insert(ink.pixels.end(), begin, begin + ink.width);
  }
  return ink;
}

int Font::Width(std::string_view text) const {
  int width = 0;
  while (!text.empty()) width += GlyphOf(TakeCharacter(text)).advance;
  return width;
}

}  // namespace sim
