#include "flight/expectations/Expectations.h"

#include <fmt/format.h>

#include <algorithm>

#include "view/Screen.h"

namespace sim {

const std::vector<ExpectationWord>& ExpectationWords() {
  static const std::vector<ExpectationWord> kWords = {
      LogContainsExpectation(),  LogLacksExpectation(),      DataRefIsExpectation(),
      PluginCountExpectation(),  PluginIsExpectation(),      ScreenShowsExpectation(),
      ScreenLacksExpectation(),  MenuItemIsExpectation(),    CameraIsExpectation(),
      PlanesHeldByExpectation(), ObjectsLoadedExpectation(), LoadFailuresAreExpectation(),
  };
  return kWords;
}

bool SameNumber(double left, double right) { return static_cast<float>(left) == static_cast<float>(right); }

std::string Times(int count) { return count == 1 ? "once" : fmt::format("{} times", count); }

bool ScreenHas(const std::string& text) {
  return std::ranges::any_of(gScreen.texts,
                             [&](const std::string& drawn) { return drawn.find(text) != std::string::npos; });
}

std::string TextsOnScreen() {
  if (gScreen.texts.empty()) return "no text";
  return fmt::format("\"{}\"", fmt::join(gScreen.texts, "\", \""));
}

}  // namespace sim
