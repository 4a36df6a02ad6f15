#include "window/Widgets.h"

#include <algorithm>

namespace sim {

void ColouredText(const ImVec4& colour, const std::string& text) {
  ImGui::PushStyleColor(ImGuiCol_Text, colour);
  ImGui::TextUnformatted(text.c_str());
  ImGui::PopStyleColor();
}

void FaintText(const std::string& text) {
  ColouredText(ImGui::GetStyleColorVec4(ImGuiCol_TextDisabled), text);
}

void Swatch(ImU32 colour) {
  const float side = ImGui::GetFontSize() * 0.7F;
  ImVec2 corner = ImGui::GetCursorScreenPos();
  corner.y += (ImGui::GetTextLineHeight() - side) * 0.5F;
  ImGui::GetWindowDrawList()->AddRectFilled(corner, {corner.x + side, corner.y + side}, colour, side * 0.2F);
  ImGui::Dummy({side, side});
  ImGui::SameLine();
}

void TextCell(const std::string& text) {
  ImGui::TableNextColumn();
  ImGui::TextUnformatted(text.c_str());
}

void NumberCell(const std::string& text) {
  ImGui::TableNextColumn();
  const float room = ImGui::GetContentRegionAvail().x - ImGui::CalcTextSize(text.c_str()).x;
  ImGui::SetCursorPosX(ImGui::GetCursorPosX() + std::max(0.0F, room));
  ImGui::TextUnformatted(text.c_str());
}

}  // namespace sim
