#include "window/Search.h"

#include <imgui.h>
#include <imgui/imgui_stdlib.h>

#include <algorithm>

#include "window/WidgetPlaces.h"
#include "window/Widgets.h"

namespace sim {

namespace {

char Small(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace

bool Finds(std::string_view search, std::string_view text) {
  const auto isSame = [](char left, char right) { return Small(left) == Small(right); };
  while (!search.empty()) {
    const std::string_view word = search.substr(0, search.find(' '));
    if (std::search(text.begin(), text.end(), word.begin(), word.end(), isSame) == text.end() &&
        !word.empty())
      return false;
    search.remove_prefix(std::min(word.size() + 1, search.size()));
  }
  return true;
}

bool DrawSearch(const char* panel, std::string& search) {
  ImGui::SetNextItemWidth(-4.0F * ImGui::GetFontSize());
  const bool isChanged = ImGui::InputTextWithHint("##search", "search", &search);
  MarkField(panel, "search", search);
  return isChanged;
}

void DrawProblem(const std::string& problem) {
  if (!problem.empty()) ColouredText(Shade(kBad), problem);
}

}  // namespace sim
