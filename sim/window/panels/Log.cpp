// The flight's log, as it is written.
#include <fmt/format.h>
#include <imgui.h>
#include <imgui/imgui_stdlib.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "host/PluginList.h"
#include "report/Log.h"
#include "window/LogLines.h"
#include "window/Panel.h"
#include "window/PluginColours.h"
#include "window/Widgets.h"

namespace sim {
namespace {

constexpr std::size_t kMostCopied = 100'000;  // lines

struct LogView {
  LogLines lines;
  std::vector<std::string> writers;  // their signatures, or "simulator"
  FilteredLog filtered;
  LogFilter filter;
  bool followsEnd = true;
  // A range of lines by their place among those that are shown.
  std::size_t selectionBegin = 0;
  std::size_t selectionEnd = 0;
  std::size_t anchor = 0;
};
LogView gView;

std::string_view TextOf(std::size_t shown) {
  const LogLine& line = gView.lines.Line(gView.filtered.Shown()[shown]);
  return gLog->Text().substr(line.begin, line.length);
}

// A plugin that has not started yet has no signature.
void NameWriters() {
  gView.writers.clear();
  for (const std::string& path : gView.lines.Writers()) gView.writers.push_back(OwnerOfPath(path));
}

ImU32 ColourOfWriter(std::size_t writer) {
  return writer == 0 ? ImGui::GetColorU32(ImGuiCol_TextDisabled) : PluginColour(gView.writers[writer]);
}

void ChooseWriter() {
  const int chosen = gView.filter.writer;
  const std::string preview =
      chosen == LogFilter::kAnybody ? "all plugins" : gView.writers[static_cast<std::size_t>(chosen)];
  ImGui::SetNextItemWidth(ImGui::GetFontSize() * 11.0F);
  if (!ImGui::BeginCombo("##writer", preview.c_str())) return;
  if (ImGui::Selectable("all plugins", chosen == LogFilter::kAnybody))
    gView.filter.writer = LogFilter::kAnybody;
  for (std::size_t writer = 0; writer < gView.writers.size(); ++writer) {
    ImGui::PushID(static_cast<int>(writer));
    if (ImGui::Selectable(gView.writers[writer].c_str(), chosen == static_cast<int>(writer)))
      gView.filter.writer = static_cast<int>(writer);
    ImGui::PopID();
  }
  ImGui::EndCombo();
}

void Copy(std::size_t begin, std::size_t end) {
  std::string text;
  for (std::size_t shown = begin; shown < std::min(end, begin + kMostCopied); ++shown)
    text.append(TextOf(shown)).append("\n");
  ImGui::SetClipboardText(text.c_str());
}

void CopySelectionOrAll() {
  if (gView.selectionBegin < gView.selectionEnd)
    Copy(gView.selectionBegin, gView.selectionEnd);
  else
    Copy(0, gView.filtered.Shown().size());
}

void DrawChoices() {
  ImGui::SetNextItemWidth(ImGui::GetFontSize() * 11.0F);
  ImGui::InputTextWithHint("##text", "search", &gView.filter.text);
  ImGui::SameLine();
  ChooseWriter();
  ImGui::SameLine();
  ImGui::Checkbox("warnings alone", &gView.filter.takesWarningsAlone);
  ImGui::SameLine();
  ImGui::Checkbox("follow", &gView.followsEnd);
  ImGui::SameLine();
  if (ImGui::Button("Copy")) CopySelectionOrAll();
  if (ImGui::IsItemHovered())
    ImGui::SetTooltip("The lines that are selected by clicks, with Shift up to the click; without any, all.");
}

void Select(std::size_t shown) {
  if (!ImGui::GetIO().KeyShift) gView.anchor = shown;
  gView.selectionBegin = std::min(gView.anchor, shown);
  gView.selectionEnd = std::max(gView.anchor, shown) + 1;
}

void DrawLine(std::size_t shown) {
  const LogLine& line = gView.lines.Line(gView.filtered.Shown()[shown]);
  const std::string_view text = TextOf(shown);
  ImGui::PushID(static_cast<int>(shown));
  const bool isSelected = gView.selectionBegin <= shown && shown < gView.selectionEnd;
  const ImVec2 corner = ImGui::GetCursorScreenPos();
  const float height = ImGui::GetTextLineHeight();
  const float bar = ImGui::GetFontSize() * 0.25F;
  if (ImGui::Selectable("##line", isSelected, ImGuiSelectableFlags_None, {0.0F, height})) Select(shown);
  ImGui::GetWindowDrawList()->AddRectFilled(corner, {corner.x + bar, corner.y + height},
                                            ColourOfWriter(line.writer));
  ImGui::SameLine(ImGui::GetStyle().WindowPadding.x + bar * 2.5F);
  if (line.isWarning) ImGui::PushStyleColor(ImGuiCol_Text, Shade(kWarning));
  ImGui::TextUnformatted(text.data(), text.data() + text.size());
  if (line.isWarning) ImGui::PopStyleColor();
  ImGui::PopID();
}

// Once a reader scrolls up, the lines stay where they are; at the end, they follow it again.
void FollowEnd() {
  const bool isAtEnd = ImGui::GetScrollY() >= ImGui::GetScrollMaxY() - 1.0F;
  if (ImGui::IsWindowHovered() && ImGui::GetIO().MouseWheel != 0.0F) gView.followsEnd = isAtEnd;
  if (gView.followsEnd) ImGui::SetScrollY(ImGui::GetScrollMaxY() + ImGui::GetTextLineHeight());
}

void DrawLines() {
  ImGui::PushStyleVar(ImGuiStyleVar_ItemSpacing, {0.0F, 1.0F});
  if (ImGui::BeginChild("lines", {0.0F, 0.0F}, true, ImGuiWindowFlags_HorizontalScrollbar)) {
    ImGui::PushFont(MonospacedFont());
    DrawVisibleRows(gView.filtered.Shown().size(), DrawLine);
    ImGui::PopFont();
    if (ImGui::IsWindowFocused() && ImGui::GetIO().KeyCtrl &&
        ImGui::IsKeyPressed(ImGui::GetKeyIndex(ImGuiKey_C)))
      CopySelectionOrAll();
    FollowEnd();
  }
  ImGui::EndChild();
  ImGui::PopStyleVar();
}

void Draw() {
  const std::string_view text = gLog->Text();
  gView.lines.Follow(text, gLog->Passages());
  NameWriters();
  const LogFilter before = gView.filter;
  DrawChoices();
  if (gView.filter != before) gView.selectionBegin = gView.selectionEnd = 0;
  gView.filtered.Follow(text, gView.lines, gView.filter);
  FaintText(fmt::format("{} of {} lines, {} warnings{}", gView.filtered.Shown().size(), gView.lines.Count(),
                        gView.lines.CountWarnings(),
                        gView.filtered.IsUpToDate(gView.lines) ? "" : ", searching"));
  DrawLines();
}

}  // namespace

const Panel kLogPanel{.name = "Log", .key = 5, .draw = Draw};

}  // namespace sim
