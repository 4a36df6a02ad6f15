#include "window/MenuBar.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <imgui.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/MenuServices.h"
#include "window/Ask.h"
#include "window/WidgetPlaces.h"

namespace sim {
namespace {

constexpr const char* kSeparator = "-";

// A menu whose items lead back to it is shown no deeper than this.
constexpr std::size_t kDeepestMenu = 16;

void Mark(const std::vector<std::string>& way) { MarkWidget("menu", fmt::format("{}", fmt::join(way, "/"))); }

void Pick(const std::vector<std::string>& way, int menu, int position) {
  nlohmann::json step = {{"pickMenuItem", way}};
  if (const int number = NumberOfMenuItem(way, menu, position); number != 1) step["number"] = number;
  static std::string problem;
  Ask(std::move(step), problem);
}

// An item that was cleared away has no name, and keeps its position.
void DrawMenu(int menu, std::vector<std::string>& way) {
  for (int position = -1; const MenuLine& line : MenuLines(menu)) {
    ++position;
    if (line.name.empty()) continue;
    if (line.name == kSeparator) {
      ImGui::Separator();
      continue;
    }
    way.push_back(line.name);
    ImGui::PushID(position);
    if (line.subMenu != kNoMenu && way.size() < kDeepestMenu) {
      const bool isOpen = ImGui::BeginMenu(line.name.c_str(), line.isEnabled);
      Mark(way);
      if (isOpen) {
        DrawMenu(line.subMenu, way);
        ImGui::EndMenu();
      }
    } else {
      if (ImGui::MenuItem(line.name.c_str(), nullptr, line.isChecked, line.isEnabled))
        Pick(way, menu, position);
      Mark(way);
    }
    ImGui::PopID();
    way.pop_back();
  }
}

}  // namespace

void DrawMenuBar(const std::function<void()>& drawView) {
  if (!ImGui::BeginMainMenuBar()) return;
  std::vector<std::string> way;
  DrawMenu(kMenuBar, way);
  const bool isOpen = ImGui::BeginMenu("View");
  Mark({"View"});
  if (isOpen) {
    drawView();
    ImGui::EndMenu();
  }
  ImGui::EndMainMenuBar();
}

}  // namespace sim
