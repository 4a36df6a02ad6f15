// Small helpers for text and numbers that every subsystem may use. They know nothing of plugins.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The directory separator of the host's paths.
inline constexpr char gDirSeparator[] = "/";

// The smaller of two values, the first on a tie.
template <class T>
constexpr T VYRA_TMIN(T first, T second) {
  return second < first ? second : first;
}

// Copies `source` into a buffer of `size` bytes, cut to size - 1 bytes, and terminates it. A null or empty
// buffer is left alone.
void strcpytrunc(char* destination, std::string_view source, std::size_t size);

// Convert path text between UTF-8 and the host's older encoding, for plugins that did not ask for native
// paths. On this platform the older encoding is UTF-8, so both return their text unchanged.
std::string VYRAOldToUTF8(std::string_view text);
std::string VYRAUTF8ToOld(std::string_view text);
