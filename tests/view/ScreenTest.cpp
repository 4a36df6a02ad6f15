// What a person would read of what was drawn.
#include <gtest/gtest.h>

#include <array>

#include "Allocations.h"
#include "view/Fonts.h"
#include "view/Screen.h"

namespace {

using namespace sim;
using Texts = std::vector<std::string>;

constexpr TextStyle kFixed{.font = 1};  // all of whose characters are equally wide

class ScreenTest : public testing::Test {
 protected:
  ScreenTest() {
    screen.Resize(400, 300);
    screen.Begin();
  }

  int Wide(int characters) const { return characters * FontOf(1).DigitWidth(); }

  Screen screen;
  std::array<char, 3> windows{};  // whose addresses stand for windows
};

TEST_F(ScreenTest, OnlyCharactersThatLieWhollyOnTheScreenShow) {
  screen.AddText("far away", -5'000, -9'000, kFixed);
  screen.AddText("ABCDEF", -Wide(2), 100, kFixed);
  screen.AddText("ABCDEF", 400 - Wide(3) - 1, 120, kFixed);
  screen.AddText("above", 10, 296, kFixed);
  screen.AddText("ABgAB", 10, 0, kFixed);  // of which the g reaches below the bottom
  EXPECT_EQ(screen.ShownTexts(), (Texts{"CDEF", "ABC", "AB", "AB"}));
}

TEST_F(ScreenTest, WindowCoversWhatIsBelowItAndNotItsOwn) {
  screen.AddText("0123456789", 0, 100, kFixed);
  screen.SetLevel(Level::InWindow, &windows[0]);
  screen.AddText("back", Wide(4), 100, kFixed);
  screen.AddText("title", Wide(20), 100, kFixed);  // outside of its window
  screen.SetLevel(Level::InWindow, &windows[1]);
  screen.AddText("front", Wide(4), 100, kFixed);
  screen.SetLevel(Level::AboveWindows);
  screen.AddText("map", Wide(4), 100, kFixed);
  screen.AddWindow(&windows[1], {Wide(3), 90, Wide(6), 120});
  screen.AddWindow(&windows[0], {Wide(2), 90, Wide(30), 120});
  EXPECT_EQ(screen.ShownTexts(), (Texts{"01", "ck", "title", "front", "map"}));

  // The next frame knows nothing of it.
  screen.Begin();
  screen.AddText("0123456789", 0, 100, kFixed);
  EXPECT_EQ(screen.ShownTexts(), Texts{"0123456789"});
}

TEST_F(ScreenTest, RectangleShowsOnlyWhatLiesWhollyInside) {
  screen.AddText("ABCDEF", 50, 100, kFixed);
  const int top = 100 + FontOf(1).Ascent();
  EXPECT_EQ(screen.ShownTexts(Rectangle{50, 100, 50 + Wide(6), top}), Texts{"ABCDEF"});
  EXPECT_EQ(screen.ShownTexts(Rectangle{50 + Wide(1), 100, 50 + Wide(4), top}), Texts{"BCD"});
  EXPECT_EQ(screen.ShownTexts(Rectangle{50, 101, 50 + Wide(6), top}), Texts{});
}

TEST_F(ScreenTest, WordsThatDoNotFitBeginALineBelow) {
  TextStyle style = kFixed;
  style.wrapWidth = Wide(9);
  screen.AddText("one three five\nsix", 50, 100, style);
  EXPECT_EQ(screen.ShownTexts(), Texts{"one three five six"});
  const int line = FontOf(1).LineHeight();
  const auto shownOn = [&](int number) {
    const int baseline = 100 - number * line;
    return screen.ShownTexts(Rectangle{50, baseline - 4, 50 + Wide(9), baseline + FontOf(1).Ascent()});
  };
  EXPECT_EQ(shownOn(0), Texts{"one three "});
  EXPECT_EQ(shownOn(1), Texts{"five "});
  EXPECT_EQ(shownOn(2), Texts{"six"});
}

TEST_F(ScreenTest, DrawingOutsideOfAFrameShowsNothing) {
  screen.End();
  screen.AddText("late", 50, 100, kFixed);
  screen.AddBox({0, 0, 10, 10});
  EXPECT_TRUE(screen.Items().empty());
}

TEST_F(ScreenTest, FrameLikeTheLastAllocatesNothing) {
  const auto draw = [&] {
    screen.Begin();
    for (int line = 0; line < 50; ++line) {
      screen.AddBox({10, 10, 100, 100});
      screen.AddText("a text that is too long for a string of few bytes", 10, line, kFixed);
    }
    screen.AddWindow(&windows[0], {0, 0, 10, 10});
    screen.End();
  };
  draw();
  const long before = gAllocations;
  draw();
  EXPECT_EQ(gAllocations, before);
}

}  // namespace
