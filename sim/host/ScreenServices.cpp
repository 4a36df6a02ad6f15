// Every font has characters of the same size.
#include "host/ScreenServices.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "host/FlightBoard.h"
#include "report/Activity.h"
#include "view/Screen.h"

namespace sim {
namespace {

constexpr int kCharWidth = 8;
constexpr int kCharHeight = 16;
constexpr int kMostDecimals = 9;
constexpr int kLastDrawingStep = 26;
constexpr int kWindowStep = 20;

void Note(std::string text) {
  gScreen.texts.push_back(std::move(text));
  ++gActivity.textsDrawn;
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
  return static_cast<float>(strnlen(text, static_cast<std::size_t>(charCount)) * kCharWidth);
}

}  // namespace

void FillScreenServices(VYRAHostServices& services) {
  services.GetScreenSize = [](int* outWidth, int* outHeight) {
    if (outWidth != nullptr) *outWidth = kScreenWidth;
    if (outHeight != nullptr) *outHeight = kScreenHeight;
  };
  services.GetMouseLocation = [](int* outX, int* outY, int /*flag*/) {
    if (outX != nullptr) *outX = gScreen.mouseX;
    if (outY != nullptr) *outY = gScreen.mouseY;
  };
  services.DrawTranslucentDarkBox = [](int, int, int, int) { ++gActivity.boxesDrawn; };
  services.DrawString = [](float*, int, int, char* text, int*, int) {
    if (text != nullptr) Note(text);
  };
  services.DrawNumber = DrawNumber;
  services.GetFontDimensions = GetFontDimensions;
  services.MeasureString = MeasureString;
}

void DrawFrame() {
  gScreen.texts.clear();
  for (int step = 1; step <= kLastDrawingStep; ++step) {
    CallHook("VYRADoDrawingHook", VYRADoDrawingHook, step, 0);
    // Here and nowhere later, before anything else calls plugins: the step has walked the windows from the
    // back, and until they are walked from the front a new window would hide all but the back-most one.
    if (step == kWindowStep) CallHook("VYRACursorHook", VYRACursorHook, gScreen.mouseX, gScreen.mouseY);
  }
}

}  // namespace sim
