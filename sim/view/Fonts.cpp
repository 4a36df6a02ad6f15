#include "view/Fonts.h"

#include <array>

namespace sim {

const Font& FontOf(int number) {
  static const std::array<Font, kFontCount> fonts{{
      Font(VYRA_FONT_FOLDER "/DejaVuSans.ttf", 13, false),
      Font(VYRA_FONT_FOLDER "/DejaVuSansMono.ttf", 13, false),
      Font(VYRA_FONT_FOLDER "/DejaVuSans-Bold.ttf", 17, false),
      Font(VYRA_FONT_FOLDER "/DejaVuSansMono-Bold.ttf", 26, true),
  }};
  return fonts[number >= 0 && number < kFontCount ? static_cast<std::size_t>(number) : 0];
}

}  // namespace sim
