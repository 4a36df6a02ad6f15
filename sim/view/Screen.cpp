#include "view/Screen.h"

#include <utility>

#include "view/Fonts.h"
#include "view/TextLayout.h"

namespace sim {
namespace {

// Of a character's ink; of a space, a part of its baseline.
Rectangle InkOf(const PlacedGlyph& placed) {
  const Glyph& glyph = placed.glyph;
  if (glyph.width == 0)
    return {.left = placed.x, .bottom = placed.y, .right = placed.x + glyph.advance, .top = placed.y + 1};
  const int left = placed.x + glyph.left;
  const int top = placed.y + glyph.top;
  return {.left = left, .bottom = top - glyph.height, .right = left + glyph.width, .top = top};
}

}  // namespace

void Screen::Resize(int newWidth, int newHeight) {
  width = newWidth;
  height = newHeight;
}

void Screen::Begin() {
  isOpen = true;
  allTexts.clear();
  items.clear();
  windows.clear();
  SetLevel(Level::BelowWindows);
}

void Screen::SetLevel(Level newLevel, const void* newWindow) {
  level = newLevel;
  levelWindow = newWindow;
}

void Screen::AddText(std::string_view text, int x, int y, const TextStyle& style) {
  if (!isOpen) return;
  const std::size_t begin = allTexts.size();
  allTexts += text;
  items.push_back({.kind = ScreenItem::Kind::Text,
                   .level = level,
                   .window = levelWindow,
                   .box = {},
                   .x = x,
                   .y = y,
                   .style = style,
                   .textBegin = begin,
                   .textSize = text.size()});
}

void Screen::AddBox(const Rectangle& box) {
  if (isOpen)
    items.push_back({.kind = ScreenItem::Kind::Box, .level = level, .window = levelWindow, .box = box});
}

bool Screen::IsCovered(const ScreenItem& item, const Rectangle& place) const {
  if (item.level == Level::AboveWindows) return false;
  for (const ScreenWindow& above : windows) {
    if (item.level == Level::InWindow && above.window == item.window) return false;
    if (above.place.Meets(place)) return true;
  }
  return false;
}

std::vector<std::string> Screen::ShownTexts(const std::optional<Rectangle>& within) const {
  const Rectangle screen{.left = 0, .bottom = 0, .right = width, .top = height};
  std::vector<std::string> shown;
  for (const ScreenItem& item : items) {
    if (item.kind != ScreenItem::Kind::Text) continue;
    std::string run;
    const auto endRun = [&] {
      if (!run.empty()) shown.push_back(std::exchange(run, {}));
    };
    LayOut(FontOf(item.style.font), TextOf(item), item.x, item.y, item.style.wrapWidth,
           [&](const PlacedGlyph& placed) {
             if (placed.isBreak) {
               if (!run.empty()) run += ' ';
               return;
             }
             if (placed.glyph.advance == 0 && placed.glyph.width == 0) return;  // nothing to be seen anyway
             const Rectangle ink = InkOf(placed);
             const bool isShown =
                 screen.Holds(ink) && (!within || within->Holds(ink)) && !IsCovered(item, ink);
             if (isShown)
               run += placed.bytes;
             else
               endRun();
           });
    endRun();
  }
  return shown;
}

}  // namespace sim
