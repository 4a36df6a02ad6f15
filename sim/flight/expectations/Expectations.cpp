#include "flight/expectations/Expectations.h"

#include <utility>

#include <fmt/format.h>

#include <algorithm>

namespace sim {

const std::vector<ExpectationWord>& ExpectationWords() {
  static const std::vector<ExpectationWord> kWords = {
      LogContainsExpectation(),  LogLacksExpectation(),      DataRefIsExpectation(),
      PluginCountExpectation(),  PluginIsExpectation(),      ScreenShowsExpectation(),
      ScreenLacksExpectation(),  MenuItemIsExpectation(),    CameraIsExpectation(),
      PlanesHeldByExpectation(), ObjectsLoadedExpectation(), LoadFailuresAreExpectation(),
      ObjectDrawnExpectation(),  PlaneDrawnExpectation(),    NoWarningsExpectation(),
      WindowIsExpectation(),     ClickTakenByExpectation(),  KeyTakenByExpectation(),
      WheelTakenByExpectation(), CursorIsExpectation(),      HotKeyIsExpectation(),
      HandledByExpectation(),    CalledTimesExpectation(),   TextureBoundExpectation(),
      FileHasExpectation(),      CostBelowExpectation(),     FeatureIsExpectation(),
  };
  return kWords;
}

bool SameNumber(double left, double right) { return static_cast<float>(left) == static_cast<float>(right); }

std::string Times(int count) { return count == 1 ? "once" : fmt::format("{} times", count); }

Key InsideKey() {
  constexpr int kFarthest = 100'000;
  const auto edge = [](std::string_view name, std::string_view description) {
    return WholeNumberKey(name, 0, kFarthest, description);
  };
  return Optional(
      ObjectKey("inside",
                {edge("left", "pixels from the screen's left edge"), edge("bottom", "pixels from its bottom"),
                 edge("right", "pixels from its left edge, not reached by the text"),
                 edge("top", "pixels from its bottom, not reached by the text")},
                "only what lies wholly inside this rectangle counts"));
}

ScreenSearch ReadScreenSearch(const Entry& entry, std::string_view word) {
  ScreenSearch search{.text = entry.Text(word), .within = std::nullopt};
  if (!entry.Has("inside")) return search;
  const Entry inside = entry.Object("inside");
  search.within = Rectangle{.left = inside.WholeNumber("left"),
                            .bottom = inside.WholeNumber("bottom"),
                            .right = inside.WholeNumber("right"),
                            .top = inside.WholeNumber("top")};
  return search;
}

std::string ScreenSearch::Text() const {
  if (!within) return fmt::format("\"{}\"", text);
  return fmt::format("\"{}\" inside {}, {} to {}, {}", text, within->left, within->bottom, within->right,
                     within->top);
}

bool ScreenSearch::Succeeds() const {
  return std::ranges::any_of(gScreen.ShownTexts(within), [this](const std::string& shown) {
    return shown.find(text) != std::string::npos;
  });
}

std::string ScreenSearch::Found() const {
  const std::vector<std::string> shown = gScreen.ShownTexts(within);
  if (shown.empty()) return "no text";
  return fmt::format("\"{}\"", fmt::join(shown, "\", \""));
}

Claim CountClaim(std::string text, int wanted, int (*count)()) {
  return {.text = std::move(text), .check = [wanted, count]() -> Finding {
            const int found = count();
            return {found == wanted, std::to_string(found)};
          }};
}

}  // namespace sim
