#include "view/Fonts.h"

#include <array>

namespace sim {

const Font& FontOf(int number) {
  static const std::array<Font, kFontCount> fonts{{
      Font(FontFile("DejaVuSans.ttf"), 13, false),
      Font(FontFile("DejaVuSansMono.ttf"), 13, false),
      Font(FontFile("DejaVuSans-Bold.ttf"), 17, false),
      Font(FontFile("DejaVuSansMono-Bold.ttf"), 26, true),
  }};
  return fonts[number >= 0 && number < kFontCount ? static_cast<std::size_t>(number) : 0];
}

std::string FontFile(std::string_view name) { return std::string(VYRA_FONT_FOLDER "/").append(name); }

}  // namespace sim
