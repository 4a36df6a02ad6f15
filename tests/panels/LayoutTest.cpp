// Where the panels lie at first, and what is remembered of it.
#include "window/Layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "window/Panel.h"

namespace {

namespace fs = std::filesystem;
using sim::Layout;
using sim::PanelPlace;

class LayoutTest : public testing::Test {
 protected:
  LayoutTest() { fs::remove_all(folder); }
  ~LayoutTest() override { fs::remove_all(folder); }

  fs::path File() const { return folder / "window-layout.json"; }
  void WriteFile(const std::string& text) const { std::ofstream(File()) << text; }

  fs::path folder = fs::path(testing::TempDir()) /
                    ("layout-" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
  Layout layout{{"Log", {.isShown = true, .left = 3, .top = 40.5F, .width = 300, .height = 200}},
                {"Frame", {.isShown = false, .left = 500, .top = 9, .width = 100, .height = 90}}};
};

TEST_F(LayoutTest, IsRememberedInAFolderThatIsMadeForIt) {
  EXPECT_TRUE(sim::ReadLayout(folder).empty());
  ASSERT_TRUE(sim::WriteLayout(folder, layout));
  EXPECT_EQ(sim::ReadLayout(folder), layout);
}

TEST_F(LayoutTest, WithoutAFolderNothingIsRememberedAndNothingFails) {
  EXPECT_TRUE(sim::WriteLayout("", layout));
  EXPECT_TRUE(sim::ReadLayout("").empty());
}

TEST_F(LayoutTest, FolderThatCannotBeWrittenIsTold) {
  std::ofstream(folder) << "a file in its place";
  EXPECT_FALSE(sim::WriteLayout(folder, layout));
}

TEST_F(LayoutTest, DamagedFileIsIgnored) {
  sim::WriteLayout(folder, layout);
  std::stringstream text;
  text << std::ifstream(File()).rdbuf();
  const std::string whole = text.str().substr(0, text.str().rfind('}') + 1);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    WriteFile(whole.substr(0, length));
    ASSERT_TRUE(sim::ReadLayout(folder).empty()) << length;
  }
  for (const char* const other : {"[1, 2]", R"({"Log": 7})", R"({"Log": {"isShown": "yes"}})",
                                  R"({"Log": {"isShown": true, "left": 1}})", "\xFF\xFE{}",
                                  R"({"Log":{"isShown":true,"left":1e99,"top":0,"width":9,"height":9}})"}) {
    WriteFile(other);
    EXPECT_TRUE(sim::ReadLayout(folder).empty()) << other;
  }
}

bool Covers(const PanelPlace& place, float x, float y) {
  return place.left <= x && x < place.left + place.width && place.top <= y && y < place.top + place.height;
}

TEST(FirstPlaces, OfAllPanelsLieSideBySideAndInTheWindow) {
  for (const auto& [width, height, density] :
       {std::tuple{1280.0F, 720.0F, 1.0F}, {640.0F, 480.0F, 1.0F}, {3840.0F, 2160.0F, 2.0F}}) {
    std::vector<PanelPlace> places;
    for (const sim::Panel& panel : sim::Panels()) {
      places.push_back(sim::FirstPlace(panel.name, width, height, density));
      EXPECT_EQ(sim::Within(places.back(), width, height), places.back()) << panel.name;
    }
    for (float y = 0; y < height; y += 7)
      for (float x = 0; x < width; x += 7)
        EXPECT_LE(std::ranges::count_if(places, [&](const auto& place) { return Covers(place, x, y); }), 1)
            << x << ", " << y;
  }
}

TEST(PlaceWithin, ASmallerWindowMovesAndShrinksAPanelUntilAllOfItCanBeSeen) {
  const PanelPlace far{.isShown = true, .left = 9000, .top = -400, .width = 2000, .height = 300};
  EXPECT_EQ(sim::Within(far, 800, 600),
            (PanelPlace{.isShown = true, .left = 0, .top = 0, .width = 800, .height = 300}));
  const PanelPlace tiny{.isShown = true, .left = 790, .top = 595, .width = 1, .height = -5};
  const PanelPlace seen = sim::Within(tiny, 800, 600);
  EXPECT_GE(seen.width, 80);
  EXPECT_LE(seen.left + seen.width, 800);
  EXPECT_LE(seen.top + seen.height, 600);
}

}  // namespace
