#include "window/panels/FrameCalls.h"

#include <fmt/format.h>
#include <imgui.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "VYRAWatch.h"
#include "window/PluginColours.h"
#include "window/Widgets.h"

namespace sim {
namespace {

constexpr int kShownDepths = 5;

// The calls side by side in time, those inside others below them; above them the frame's parts.
void DrawTimeline(const RecordedFrame& frame, const FrameHistory& history) {
  ImDrawList& list = *ImGui::GetWindowDrawList();
  const float row = ImGui::GetFontSize();
  const ImVec2 corner = ImGui::GetCursorScreenPos();
  const float width = ImGui::GetContentRegionAvail().x;
  std::uint8_t deepest = 0;
  for (const RecordedCall& call : frame.calls) deepest = std::max(deepest, call.depth);
  const int rows = std::min<int>(deepest + 1, kShownDepths) + 1;
  ImGui::InvisibleButton("timeline", {width, row * static_cast<float>(rows) + 2.0F});
  const float perNanosecond = width / static_cast<float>(std::max<Nanoseconds>(frame.duration, 1));
  const ImVec2 mouse = ImGui::GetIO().MousePos;
  const auto drawSpan = [&](Nanoseconds begin, Nanoseconds duration, int depth, ImU32 colour) {
    const float left = corner.x + static_cast<float>(begin) * perNanosecond;
    const float right = std::max(left + static_cast<float>(duration) * perNanosecond, left + 1.0F);
    const float top = corner.y + row * static_cast<float>(depth);
    list.AddRectFilled({left, top}, {right, top + row - 1.0F}, colour);
    return ImGui::IsItemHovered() && left <= mouse.x && mouse.x < right + 1.0F && top <= mouse.y &&
           mouse.y < top + row;
  };
  Nanoseconds begin = 0;
  for (std::size_t part = 0; part + 1 < kFrameParts; ++part) {
    const int shade = part % 2 == 0 ? 74 : 92;
    if (drawSpan(begin, frame.parts[part], 0, IM_COL32(shade, shade + 5, shade + 12, 255)))
      ImGui::SetTooltip("%s: %.3f ms", kFramePartNames[part], Milliseconds(frame.parts[part]));
    begin += frame.parts[part];
  }
  for (const RecordedCall& call : frame.calls)
    if (call.depth < kShownDepths && drawSpan(call.begin, call.duration, call.depth + 1,
                                              PluginColour(history.Plugins()[call.plugin].signature)))
      ImGui::SetTooltip("%s\n%s: %.3f ms, %.3f ms of it its own",
                        history.Plugins()[call.plugin].signature.c_str(), VYRAGetCallKindName(call.kind),
                        Milliseconds(call.duration), Milliseconds(call.own));
}

void DrawCall(const FoldedCall& call, const std::string& signature) {
  ImGui::TableNextRow();
  ImGui::TableNextColumn();
  const float indent = ImGui::GetFontSize() * static_cast<float>(call.first.depth);
  ImGui::SetCursorPosX(ImGui::GetCursorPosX() + indent);
  Swatch(PluginColour(signature));
  const char* const kind = VYRAGetCallKindName(call.first.kind);
  ImGui::TextUnformatted(call.times == 1 ? kind : fmt::format("{}, {} times", kind, call.times).c_str());
  ImGui::TableNextColumn();
  FaintText(signature);
  NumberCell(fmt::format("{:.3f}", Milliseconds(call.first.begin)));
  NumberCell(fmt::format("{:.3f}", Milliseconds(call.duration)));
  NumberCell(fmt::format("{:.3f}", Milliseconds(call.own)));
}

void DrawTable(const PickedFrame& picked, const FrameHistory& history) {
  constexpr ImGuiTableFlags kFlags = ImGuiTableFlags_ScrollY | ImGuiTableFlags_RowBg |
                                     ImGuiTableFlags_Resizable | ImGuiTableFlags_BordersInnerV;
  if (!ImGui::BeginTable("calls", 5, kFlags)) return;
  const float number = ImGui::GetFontSize() * 4.0F;
  ImGui::TableSetupScrollFreeze(0, 1);
  ImGui::TableSetupColumn("call", ImGuiTableColumnFlags_WidthStretch, 1.0F);
  ImGui::TableSetupColumn("plugin", ImGuiTableColumnFlags_WidthStretch, 1.0F);
  ImGui::TableSetupColumn("at ms", ImGuiTableColumnFlags_WidthFixed, number);
  ImGui::TableSetupColumn("took ms", ImGuiTableColumnFlags_WidthFixed, number);
  ImGui::TableSetupColumn("own ms", ImGuiTableColumnFlags_WidthFixed, number);
  ImGui::TableHeadersRow();
  DrawVisibleRows(picked.calls.size(), [&](std::size_t row) {
    const FoldedCall& call = picked.calls[row];
    DrawCall(call, history.Plugins()[call.first.plugin].signature);
  });
  ImGui::EndTable();
}

}  // namespace

void DrawCallsOf(const PickedFrame& picked, const FrameHistory& history) {
  const RecordedFrame& frame = picked.frame;
  ImGui::TextUnformatted(fmt::format("frame {}: {:.2f} ms, {} calls into plugins took {:.2f} ms",
                                     frame.number, Milliseconds(frame.duration),
                                     frame.calls.size() + static_cast<std::size_t>(frame.unrecordedCalls),
                                     Milliseconds(frame.plugins))
                             .c_str());
  if (frame.unrecordedCalls > 0) FaintText(fmt::format("the last {} are not listed", frame.unrecordedCalls));
  DrawTimeline(frame, history);
  DrawTable(picked, history);
}

}  // namespace sim
