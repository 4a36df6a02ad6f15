// Texts and boxes: onto the screen, and into the frame's picture when one is painted.
#pragma once

#include <string_view>

#include "view/Screen.h"

namespace sim {

void ShowText(std::string_view text, int x, int y, const TextStyle& style);
void ShowBox(const Rectangle& box);

}  // namespace sim
