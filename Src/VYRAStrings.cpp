#include "VYRAStrings.h"

#include <cstring>

void strcpytrunc(char* destination, std::string_view source, std::size_t size) {
  if (destination == nullptr || size == 0) return;
  const std::size_t length = VYRA_TMIN(source.size(), size - 1);
  std::memcpy(destination, source.data(), length);
  destination[length] = '\0';
}

std::string VYRAOldToUTF8(std::string_view text) { return std::string(text); }

std::string VYRAUTF8ToOld(std::string_view text) { return std::string(text); }
