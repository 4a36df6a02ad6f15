// The screen's surface: the texts, boxes and windows of the frame drawn last, in their order. It is there
// whether or not anybody looks at a picture of it. Pixels, x to the right and y upward.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

// Holds its left and bottom edge, not its right and top.
struct Rectangle {
  int left = 0;
  int bottom = 0;
  int right = 0;
  int top = 0;

  bool Holds(const Rectangle& other) const {
    return left <= other.left && bottom <= other.bottom && other.right <= right && other.top <= top;
  }
  bool Meets(const Rectangle& other) const {
    return left < other.right && other.left < right && bottom < other.top && other.bottom < top;
  }
};

using Colour = std::array<float, 3>;  // red, green, blue, 0 to 1

// What is drawn lies below all windows, belongs to a window, or lies above them all.
enum class Level { BelowWindows, InWindow, AboveWindows };

struct TextStyle {
  int font = 0;
  Colour colour{1.0F, 1.0F, 1.0F};
  int wrapWidth = 0;  // pixels; 0 for one line
};

struct ScreenItem {
  enum class Kind { Text, Box };
  Kind kind;
  Level level;
  const void* window;  // of a plugin, when it belongs to one
  Rectangle box;       // of a box
  int x = 0;           // of a text: where its first baseline begins
  int y = 0;
  TextStyle style{};
  std::size_t textBegin = 0;  // in all texts of the frame
  std::size_t textSize = 0;
};

struct ScreenWindow {
  const void* window;
  Rectangle place;
};

class Screen {
 public:
  static constexpr int kDefaultWidth = 1280;
  static constexpr int kDefaultHeight = 800;
  static constexpr int kSmallestSide = 16;
  static constexpr int kLargestSide = 8'192;

  int mouseX = 0;
  int mouseY = 0;

  int Width() const { return width; }
  int Height() const { return height; }
  void Resize(int newWidth, int newHeight);

  // A frame begins: nothing is on the screen. Memory is kept, so that frames like the last allocate nothing.
  void Begin();
  // The frame is complete: what is drawn until the next one begins is seen by nobody.
  void End() { isOpen = false; }
  bool IsOpen() const { return isOpen; }

  // What is drawn from now on lies there; `window` is that of Level::InWindow.
  void SetLevel(Level newLevel, const void* newWindow = nullptr);
  bool IsInWindow() const { return level == Level::InWindow; }

  void AddText(std::string_view text, int x, int y, const TextStyle& style);
  void AddBox(const Rectangle& box);

  // The windows that cover what is below them, the front-most first; said once in a frame, after them all.
  void AddWindow(const void* window, const Rectangle& place) { windows.push_back({window, place}); }

  const std::vector<ScreenItem>& Items() const { return items; }
  std::string_view TextOf(const ScreenItem& item) const {
    return std::string_view(allTexts).substr(item.textBegin, item.textSize);
  }

  // The texts that a person would read, in their order, or only what lies within a rectangle. A character is
  // there when all of its ink is on the screen and no window lies above any of it; a text with characters
  // missing in its middle is given as several.
  std::vector<std::string> ShownTexts(const std::optional<Rectangle>& within = std::nullopt) const;

 private:
  bool IsCovered(const ScreenItem& item, const Rectangle& place) const;

  int width = kDefaultWidth;
  int height = kDefaultHeight;
  bool isOpen = false;
  Level level = Level::BelowWindows;
  const void* levelWindow = nullptr;
  std::string allTexts;
  std::vector<ScreenItem> items;
  std::vector<ScreenWindow> windows;  // the front-most first
};

inline Screen gScreen;

}  // namespace sim
