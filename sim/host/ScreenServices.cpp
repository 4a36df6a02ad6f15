#include "host/ScreenServices.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "VYRAWatch.h"
#include "report/Activity.h"
#include "view/Fonts.h"
#include "view/Screen.h"
#include "view/gl/Surface.h"

namespace sim {
namespace {

constexpr int kMostDecimals = 9;
constexpr std::size_t kNumberRoom = 352;  // for the largest double, its sign and its decimals

// Whatever is drawn while a window's callback runs belongs to that window, and what comes behind the last of
// them lies above them all.
void FollowDrawnWindow() {
  if (const void* const window = VYRAGetDrawnWindow())
    gScreen.SetLevel(Level::InWindow, window);
  else if (gScreen.IsInWindow())
    gScreen.SetLevel(Level::AboveWindows);
}

TextStyle StyleOf(const float* colourRgb, int font, const int* wrapWidth) {
  TextStyle style{.font = font};
  if (colourRgb != nullptr) std::copy_n(colourRgb, style.colour.size(), style.colour.begin());
  if (wrapWidth != nullptr) style.wrapWidth = std::max(*wrapWidth, 0);
  return style;
}

void Draw(std::string_view text, int x, int y, const TextStyle& style) {
  FollowDrawnWindow();
  ShowText(text, x, y, style);
  ++gActivity.textsDrawn;
}

// The room that a number leaves free before its first digit.
int FreeRoom(std::string_view number, int digits, const Font& font) {
  const std::size_t point = std::min(number.find('.'), number.size());
  const auto used = std::count_if(number.begin(), number.begin() + static_cast<std::ptrdiff_t>(point),
                                  [](char character) { return character >= '0' && character <= '9'; });
  return std::max(digits - static_cast<int>(used), 0) * font.DigitWidth();
}

void DrawNumber(float* colourRgb, int x, int y, double value, int digits, int decimals, int showSign,
                int font) {
  std::array<char, kNumberRoom> room{};
  decimals = std::clamp(decimals, 0, kMostDecimals);
  const auto end = showSign != 0 ? fmt::format_to_n(room.data(), room.size(), "{:+.{}f}", value, decimals)
                                 : fmt::format_to_n(room.data(), room.size(), "{:.{}f}", value, decimals);
  const std::string_view number(room.data(), end.size);
  digits = std::clamp(digits, 0, gScreen.Width());
  Draw(number, x + FreeRoom(number, digits, FontOf(font)), y, StyleOf(colourRgb, font, nullptr));
}

void GetFontDimensions(int font, int* outCharWidth, int* outCharHeight, int* outDigitsOnly) {
  if (outCharWidth != nullptr) *outCharWidth = FontOf(font).DigitWidth();
  if (outCharHeight != nullptr) *outCharHeight = FontOf(font).LineHeight();
  if (outDigitsOnly != nullptr) *outDigitsOnly = FontOf(font).HasDigitsOnly() ? 1 : 0;
}

float MeasureString(int font, const char* text, int byteCount) {
  if (text == nullptr || byteCount <= 0) return 0.0F;
  const std::string_view measured(text, strnlen(text, static_cast<std::size_t>(byteCount)));
  return static_cast<float>(FontOf(font).Width(measured));
}

}  // namespace

void FillScreenServices(VYRAHostServices& services) {
  services.GetScreenSize = [](int* outWidth, int* outHeight) {
    if (outWidth != nullptr) *outWidth = gScreen.Width();
    if (outHeight != nullptr) *outHeight = gScreen.Height();
  };
  services.GetMouseLocation = [](int* outX, int* outY, int /*flag*/) {
    if (outX != nullptr) *outX = gScreen.mouseX;
    if (outY != nullptr) *outY = gScreen.mouseY;
  };
  services.DrawTranslucentDarkBox = [](int left, int top, int right, int bottom) {
    FollowDrawnWindow();
    ShowBox({.left = left, .bottom = bottom, .right = right, .top = top});
    ++gActivity.boxesDrawn;
  };
  services.DrawString = [](float* colourRgb, int x, int y, char* text, int* wrapWidth, int font) {
    if (text != nullptr) Draw(text, x, y, StyleOf(colourRgb, font, wrapWidth));
  };
  services.DrawNumber = DrawNumber;
  services.GetFontDimensions = GetFontDimensions;
  services.MeasureString = MeasureString;
}

}  // namespace sim
