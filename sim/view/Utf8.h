// Characters of a text, which is UTF-8.
#pragma once

#include <string_view>

namespace sim {

// Takes the first character off a text that is not empty. Bytes that are no UTF-8 each count as U+FFFD, the
// character for what cannot be shown.
char32_t TakeCharacter(std::string_view& text);

}  // namespace sim
