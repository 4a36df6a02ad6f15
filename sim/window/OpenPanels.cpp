#include "window/OpenPanels.h"

#include <fmt/format.h>
#include <imgui.h>

#include <utility>

#include "window/WidgetPlaces.h"

namespace sim {

OpenPanels::OpenPanels(std::string state)
    : stateFolder(std::move(state)), remembered(ReadLayout(stateFolder)) {
  for (const Panel& panel : Panels()) {
    OpenPanel& open = panels.emplace_back(OpenPanel{.panel = &panel});
    const auto found = remembered.find(panel.name);
    if (found == remembered.end()) continue;
    open.place = found->second;
    open.place.isShown = false;
    Show(open, found->second.isShown);
  }
}

OpenPanels::~OpenPanels() {
  Remember();
  for (OpenPanel& open : panels) Show(open, false);
}

void OpenPanels::Show(OpenPanel& open, bool isShown) {
  if (open.place.isShown == isShown) return;
  open.place.isShown = isShown;
  if (open.panel->setShown != nullptr) open.panel->setShown(isShown);
}

void OpenPanels::DrawPanel(OpenPanel& open, float density) {
  if (!open.place.isShown) return;
  const ImVec2 room = ImGui::GetIO().DisplaySize;
  if (!open.isPlaced) {
    open.isPlaced = true;
    PanelPlace place = open.place;
    if (place.width <= 0.0F) place = FirstPlace(open.panel->name, room.x, room.y, density);
    place = Within(place, room.x, room.y);
    ImGui::SetNextWindowPos({place.left, place.top});
    ImGui::SetNextWindowSize({place.width, place.height});
  }
  bool staysShown = true;
  if (ImGui::Begin(open.panel->name, &staysShown)) open.panel->draw();
  if (!ImGui::IsWindowCollapsed()) {
    const ImVec2 position = ImGui::GetWindowPos();
    const ImVec2 size = ImGui::GetWindowSize();
    open.place = {.isShown = true, .left = position.x, .top = position.y, .width = size.x, .height = size.y};
  }
  ImGui::End();
  Show(open, staysShown);
}

void OpenPanels::Draw(float density) {
  for (OpenPanel& open : panels) DrawPanel(open, density);
  // At once, as a plugin may end the process; but not for each pixel that a panel is moved by.
  if (!ImGui::IsAnyMouseDown()) Remember();
}

void OpenPanels::Remember() {
  Layout now = remembered;
  for (const OpenPanel& open : panels)
    if (open.isPlaced || open.place.width > 0.0F) now[open.panel->name] = open.place;
  if (now == remembered) return;
  remembered = std::move(now);
  WriteLayout(stateFolder, remembered);
}

void OpenPanels::DrawMenu() {
  for (OpenPanel& open : panels) {
    const std::string key = fmt::format("Ctrl+{}", open.panel->key);
    if (ImGui::MenuItem(open.panel->name, key.c_str(), open.place.isShown)) Show(open, !open.place.isShown);
    MarkWidget("menu/View", open.panel->name);
  }
}

void OpenPanels::Toggle(int key) {
  for (OpenPanel& open : panels)
    if (open.panel->key == key) Show(open, !open.place.isShown);
}

}  // namespace sim
