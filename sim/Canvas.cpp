// Every font has characters of the same size.
#include "Canvas.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "World.h"

namespace sim {
namespace {

constexpr int kCharWidth = 8;
constexpr int kCharHeight = 16;
constexpr int kMostDecimals = 9;

std::vector<std::string> gTexts;

void Note(std::string text) {
  gTexts.push_back(std::move(text));
  ++gWorld.activity.textsDrawn;
}

void DrawNumber(float* /*colorRgb*/, int /*x*/, int /*y*/, double value, int /*digits*/, int decimals,
                int showSign, int /*fontId*/) {
  decimals = std::clamp(decimals, 0, kMostDecimals);
  Note(showSign != 0 ? fmt::format("{:+.{}f}", value, decimals) : fmt::format("{:.{}f}", value, decimals));
}

void GetFontDimensions(int /*fontId*/, int* outCharWidth, int* outCharHeight, int* outDigitsOnly) {
  if (outCharWidth != nullptr) *outCharWidth = kCharWidth;
  if (outCharHeight != nullptr) *outCharHeight = kCharHeight;
  if (outDigitsOnly != nullptr) *outDigitsOnly = 0;
}

float MeasureString(int /*fontId*/, const char* text, int charCount) {
  if (text == nullptr || charCount <= 0) return 0.0F;
  return static_cast<float>(strnlen(text, static_cast<size_t>(charCount)) * kCharWidth);
}

}  // namespace

void FillCanvasServices(VYRAHostServices& services) {
  services.GetScreenSize = [](int* outWidth, int* outHeight) {
    if (outWidth != nullptr) *outWidth = kScreenWidth;
    if (outHeight != nullptr) *outHeight = kScreenHeight;
  };
  services.DrawTranslucentDarkBox = [](int, int, int, int) { ++gWorld.activity.boxesDrawn; };
  services.DrawString = [](float*, int, int, char* text, int*, int) {
    if (text != nullptr) Note(text);
  };
  services.DrawNumber = DrawNumber;
  services.GetFontDimensions = GetFontDimensions;
  services.MeasureString = MeasureString;
}

void ClearCanvas() { gTexts.clear(); }

const std::vector<std::string>& TextsOnScreen() { return gTexts; }

}  // namespace sim
