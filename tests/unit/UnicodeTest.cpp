// Conversions of text: what they give for good and for malformed input. The header stands first, and without
// assertions, to show that it needs neither others before it nor a kind of build.
#ifndef NDEBUG
#define NDEBUG
#endif
#include "UTL_unicode.h"
//
#include <gtest/gtest.h>

namespace {

using Utf16String = std::basic_string<UTF16>;

UTF32 Decode(const char* bytes) { return UTF8_decode(reinterpret_cast<const UTF8*>(bytes)); }

std::string Encode(UTF32 c) {
  UTF8 bytes[4];
  return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(UTF8_encode(c, bytes))};
}

TEST(Unicode, Utf8GoesBothWaysAtTheBoundsOfEachLength) {
  for (const UTF32 c : {0x00U, 0x41U, 0x7FU, 0x80U, 0xE9U, 0x7FFU, 0x800U, 0x20ACU, 0xD800U, 0xFFFFU,
                        0x10000U, 0x1F600U, 0x10FFFFU}) {
    EXPECT_EQ(Decode(Encode(c).c_str()), c);
  }
  EXPECT_EQ(Encode(0x7F), "\x7F");
  EXPECT_EQ(Encode(0xE9), "\xC3\xA9");
  EXPECT_EQ(Encode(0x20AC), "\xE2\x82\xAC");
  EXPECT_EQ(Encode(0x1F600), "\xF0\x9F\x98\x80");
}

TEST(Unicode, MalformedUtf8DecodesToSomething) {
  for (const char* noLead : {"\x80", "\xF8\x88\x80\x80"}) EXPECT_EQ(Decode(noLead), 0U);
  EXPECT_EQ(Decode("\xC0\x81"), 1U) << "too long a form";
  EXPECT_EQ(Decode("\xC3\x29"), 0xE9U) << "not a continuation";
  const UTF8 text[] = {'A', 0x80, 0x80, 'B', 0xC3, 0xA9, 'C'};
  EXPECT_EQ(UTF8_align(text + 2), text);
  EXPECT_EQ(UTF8_next(text + 1), text + 3);
  EXPECT_EQ(UTF8_next(text + 5), text + 6);
}

TEST(UnicodeDeathTest, ValueBeyondTheCodePointsEndsTheProgramWithItsFixedText) {
  EXPECT_DEATH(
      Encode(0x110000),
      "UTL_unicode:182: int UTF8_encode\\(UTF32, UTF8\\*\\): Assertion `out of range unicode\\.' failed");
}

TEST(Unicode, Utf16PairsAreWrittenInFullAndReadWithALogicalOr) {
  UTF16 units[2] = {};
  EXPECT_EQ(UTF16_encode(0x110000, units), 2);
  EXPECT_EQ(units[0], 0xD800) << "too high a bit is dropped";
  EXPECT_EQ(UTF16_encode(0x1F600, units), 2);
  EXPECT_EQ(units[0], 0xD83D);
  EXPECT_EQ(units[1], 0xDE00);
  UTF32 c = 0;
  EXPECT_EQ(UTF16_decode(units, c), units + 2);
  EXPECT_EQ(c, 0x10001U);
  const UTF16 lowestPairAndHalf[] = {0xD800, 0xDC00, 0xDFFF, 0};  // terminated, as texts are
  EXPECT_EQ(UTF16_decode(lowestPairAndHalf, c), lowestPairAndHalf + 2);
  EXPECT_EQ(c, 0x10000U);
  EXPECT_EQ(UTF16_decode(lowestPairAndHalf + 2, c), lowestPairAndHalf + 3);
  EXPECT_EQ(c, 0xDFFFU);
}

TEST(Unicode, StringsConvertWhollyAndEndWhereTheyEnd) {
  Utf16String wide = {1, 2};
  std::string narrow = "old";
  string_utf_8_to_16("", wide);
  string_utf_16_to_8({}, narrow);
  EXPECT_TRUE(wide.empty() && narrow.empty());

  string_utf_8_to_16(std::string("A\0\xC3\xA9\xF0\x9F\x98\x80", 8), wide);
  EXPECT_EQ(wide, (Utf16String{'A', 0, 0xE9, 0xD83D, 0xDE00}));
  string_utf_16_to_8(wide, narrow);
  EXPECT_EQ(narrow, std::string("A\0\xC3\xA9\xF0\x90\x80\x81", 8)) << "pairs do not survive the way back";

  // On the heap, where the sanitizer sees a look past either end.
  const std::string padding(40, 'x');
  string_utf_8_to_16("\x80\x80" + padding + "\xF0\x9F", wide);
  const Utf16String padded = Utf16String{0} + Utf16String(40, 'x');
  EXPECT_EQ(wide, padded + Utf16String({0xD83C, 0xDC00})) << "the missing bytes count as zero";
  string_utf_16_to_8(Utf16String(40, 'x') + Utf16String{0xD801}, narrow);
  EXPECT_EQ(narrow.substr(39), "x\xF0\x90\x80\x81");
}

}  // namespace
