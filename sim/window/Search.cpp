#include "window/Search.h"

#include <imgui.h>
#include <imgui/imgui_stdlib.h>

#include <algorithm>
#include <cctype>
#include <ranges>

#include "window/WidgetPlaces.h"
#include "window/Widgets.h"

namespace sim {

bool Finds(std::string_view search, std::string_view text) {
  const auto isSame = [](unsigned char left, unsigned char right) {
    return std::tolower(left) == std::tolower(right);
  };
  return std::ranges::all_of(std::views::split(search, ' '), [&](const auto& word) {
    return std::ranges::search(text, word, isSame).begin() != text.end() || std::ranges::empty(word);
  });
}

bool DrawSearch(const char* panel, std::string& search) {
  ImGui::SetNextItemWidth(-4.0F * ImGui::GetFontSize());
  const bool isChanged = ImGui::InputTextWithHint("##search", "search", &search);
  MarkWidget(panel, "search");
  return isChanged;
}

void DrawProblem(const std::string& problem) {
  if (!problem.empty()) ColouredText(Shade(kBad), problem);
}

}  // namespace sim
