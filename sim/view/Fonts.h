// The fonts of the screen, by the numbers that plugins know them by.
#pragma once

#include <string>
#include <string_view>

#include "view/Font.h"

namespace sim {

// 0: for running text. 1: all characters equally wide. 2: headings. 3: large digits and signs, and nothing
// else. Any other number is the first one.
constexpr int kFontCount = 4;

// Opens the fonts' files, once. Throws InputError when one cannot be read; so ask before a flight.
const Font& FontOf(int number);

// The path of one of the DejaVu fonts: "DejaVuSans.ttf".
std::string FontFile(std::string_view name);

}  // namespace sim
