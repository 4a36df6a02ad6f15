// Conversions between UTF-8, UTF-16 and code points, for code that shares this header; the library itself
// uses none of them. They are lenient: malformed text decodes to some value and is never refused.
#pragma once

#include <string>

// The names, oddly cased, and the arguments are those that the code that shares this header goes by.
// NOLINTBEGIN(readability-identifier-naming)

using UTF32 = unsigned int;    // a code point
using UTF16 = unsigned short;  // a unit of UTF-16
using UTF8 = unsigned char;    // a byte of UTF-8

// The C library's end of a program whose assertion failed; its header declares it in some builds only.
extern "C" void __assert_fail(const char* assertion, const char* file, unsigned int line,
                              const char* function) noexcept __attribute__((noreturn));

// Whether a byte goes on with a sequence that another one began.
inline bool UTF8_continues(UTF8 byte) { return (byte & 0xC0) == 0x80; }

// The start of the sequence that p points into. Text must begin with one: it is not told where it begins.
inline const UTF8* UTF8_align(const UTF8* p) {
  while (UTF8_continues(*p)) --p;
  return p;
}

// The start of the sequence after the one that p points into.
inline const UTF8* UTF8_next(const UTF8* p) {
  p = UTF8_align(p) + 1;
  while (UTF8_continues(*p)) ++p;
  return p;
}

// The code point at p; 0 for a byte that begins no sequence. The bytes that should continue it are taken as
// they come, past the end of a text that is cut off.
inline UTF32 UTF8_decode(const UTF8* p) {
  const UTF8 lead = *p;
  if (lead < 0x80) return lead;
  int continuations = 0;
  UTF32 mask = 0;
  if ((lead & 0xE0) == 0xC0) {
    continuations = 1;
    mask = 0x1F;
  } else if ((lead & 0xF0) == 0xE0) {
    continuations = 2;
    mask = 0x0F;
  } else if ((lead & 0xF8) == 0xF0) {
    continuations = 3;
    mask = 0x07;
  }
  UTF32 value = lead & mask;
  for (int i = 1; i <= continuations; ++i) value = (value << 6) | (p[i] & 0x3FU);
  return value;
}

// Writes 1 to 4 bytes and returns how many. A value that is no code point ends the program.
inline int UTF8_encode(UTF32 c, UTF8* out) {
  const auto continuation = [c](unsigned shift) { return static_cast<UTF8>(0x80 | ((c >> shift) & 0x3F)); };
  if (c < 0x80) {
    out[0] = static_cast<UTF8>(c);
    return 1;
  }
  if (c < 0x800) {
    out[0] = static_cast<UTF8>(0xC0 | (c >> 6));
    out[1] = continuation(0);
    return 2;
  }
  if (c <= 0xFFFF) {
    out[0] = static_cast<UTF8>(0xE0 | (c >> 12));
    out[1] = continuation(6);
    out[2] = continuation(0);
    return 3;
  }
  if (c <= 0x10FFFF) {
    out[0] = static_cast<UTF8>(0xF0 | (c >> 18));
    out[1] = continuation(12);
    out[2] = continuation(6);
    out[3] = continuation(0);
    return 4;
  }
  // Kept: the text of the failure, place included, in every kind of build. Tools search crash logs for it,
  // so it does not follow this file's own lines.
  __assert_fail("out of range unicode.", "UTL_unicode", 182, "int UTF8_encode(UTF32, UTF8*)");
}

// Decodes one code point into c and returns the position behind it.
inline const UTF16* UTF16_decode(const UTF16* p, UTF32& c) {
  if (p[0] < 0xD800 || p[0] > 0xDBFF) {
    c = p[0];
    return p + 1;
  }
  // Kept: the halves of a pair are joined by a logical or, so that all pairs but one decode to 0x10001. Text
  // that was stored through this conversion is compared with what it gives today.
  const bool hasBits = (p[0] & 0x3FF) != 0 || (p[1] & 0x3FF) != 0;
  c = hasBits ? 0x10001 : 0x10000;
  return p + 2;
}

// Writes 1 or 2 units and returns how many. The bits of a value above the code points are dropped.
inline int UTF16_encode(UTF32 c, UTF16* out) {
  if (c <= 0xFFFF) {
    out[0] = static_cast<UTF16>(c);
    return 1;
  }
  out[0] = static_cast<UTF16>(0xD800 | (((c - 0x10000) & 0xFFC00) >> 10));
  out[1] = static_cast<UTF16>(0xDC00 | (c & 0x3FF));
  return 2;
}

inline void string_utf_8_to_16(const std::string& in, std::basic_string<UTF16>& out) {
  // Zeros on both sides: stray bytes at the start look in front of it, sequences cut off at the end behind
  // it.
  const std::string padded = '\0' + in + std::string(3, '\0');
  const auto* p = reinterpret_cast<const UTF8*>(padded.data()) + 1;
  const UTF8* const end = p + in.size();
  out.clear();
  while (p < end) {
    UTF16 units[2];
    const int count = UTF16_encode(UTF8_decode(p), units);
    out.append(units, static_cast<std::size_t>(count));
    p = UTF8_next(p);
  }
}

inline void string_utf_16_to_8(const std::basic_string<UTF16>& in, std::string& out) {
  const UTF16* p = in.c_str();  // half a pair at the end decodes together with the terminator
  const UTF16* const end = p + in.size();
  out.clear();
  while (p < end) {
    UTF32 c = 0;
    p = UTF16_decode(p, c);
    UTF8 bytes[4];
    const int count = UTF8_encode(c, bytes);
    out.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
  }
}

// NOLINTEND(readability-identifier-naming)
