// What the last frames took: bars with a part for each plugin, and the calls of the one that is picked.
#include <fmt/format.h>
#include <imgui.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "window/Panel.h"
#include "window/PluginColours.h"
#include "window/Widgets.h"
#include "window/costs/CostCollection.h"
#include "window/panels/FrameCalls.h"

namespace sim {
namespace {

constexpr ImU32 kOwnColour = IM_COL32(96, 102, 112, 255);
constexpr ImU32 kPanelsColour = IM_COL32(66, 72, 84, 255);
constexpr ImU32 kBudgetColour = IM_COL32(240, 184, 88, 220);

std::optional<PickedFrame> gPicked;

Nanoseconds PartOf(const RecordedFrame& frame, FramePart part) {
  return frame.parts[static_cast<std::size_t>(part)];
}

// The menu bar, the panels and the display, which a flight without a window has not.
Nanoseconds OfWindow(const RecordedFrame& frame) {
  return PartOf(frame, FramePart::Panels) + PartOf(frame, FramePart::Show);
}

Nanoseconds OfPlugin(const RecordedFrame& frame, std::size_t plugin) {
  return plugin < frame.byPlugin.size() ? frame.byPlugin[plugin] : 0;
}

const std::string& SignatureOf(std::size_t plugin) { return CollectedCosts().Plugins()[plugin].signature; }

void Pick(const RecordedFrame& frame) { gPicked.emplace(PickedFrame{frame, FoldCalls(frame.calls)}); }

// ---- Bars -----------------------------------------------------------------------------------------------

struct Totals {
  Nanoseconds longest = 0;
  std::size_t longestIndex = 0;
  Nanoseconds sum = 0;
  Nanoseconds between = 0;  // from the beginning of a frame to that of the next
  int intervals = 0;
};

Totals TotalsOf(const FrameHistory& history) {
  Totals totals;
  for (std::size_t index = 0; index < history.Count(); ++index) {
    const RecordedFrame& frame = history.Frame(index);
    totals.sum += frame.duration;
    if (frame.duration > totals.longest) {
      totals.longest = frame.duration;
      totals.longestIndex = index;
    }
    // The last second is enough for a rate.
    if (frame.sinceLast == 0 || index + 60 < history.Count()) continue;
    totals.between += frame.sinceLast;
    ++totals.intervals;
  }
  return totals;
}

void DrawFigures(const FrameHistory& history, const Totals& totals) {
  const double perSecond = totals.between == 0 ? 0.0 : totals.intervals / Milliseconds(totals.between) * 1e3;
  const double mean = Milliseconds(totals.sum) / static_cast<double>(history.Count());
  const double budget = Milliseconds(history.Frame(history.Count() - 1).budget);
  if (ImGui::SmallButton("Longest")) Pick(history.Frame(totals.longestIndex));
  ImGui::SameLine();
  if (gPicked) {
    if (ImGui::SmallButton("All")) gPicked.reset();
    ImGui::SameLine();
  }
  ImGui::TextUnformatted(fmt::format("{:.1f} frames/s", perSecond).c_str());
  ImGui::SameLine();
  FaintText(fmt::format("mean {:.1f} ms   longest {:.1f} ms   budget {:.1f} ms", mean,
                        Milliseconds(totals.longest), budget));
}

struct Graph {
  ImVec2 corner;
  ImVec2 size;
  float perNanosecond;

  float Height(Nanoseconds time) const { return static_cast<float>(time) * perNanosecond; }
  float Bottom() const { return corner.y + size.y; }
};

void DrawBar(const RecordedFrame& frame, const Graph& graph, float left, float right) {
  ImDrawList& list = *ImGui::GetWindowDrawList();
  float bottom = graph.Bottom();
  const auto stack = [&](Nanoseconds time, ImU32 colour) {
    const float top = std::max(bottom - graph.Height(time), graph.corner.y);
    if (bottom - top >= 0.5F) list.AddRectFilled({left, top}, {right, bottom}, colour);
    bottom = top;
  };
  for (std::size_t plugin = 0; plugin < frame.byPlugin.size(); ++plugin)
    if (frame.byPlugin[plugin] != 0) stack(frame.byPlugin[plugin], PluginColour(SignatureOf(plugin)));
  const Nanoseconds others = frame.plugins + OfWindow(frame);
  stack(frame.duration > others ? frame.duration - others : 0, kOwnColour);
  stack(OfWindow(frame), kPanelsColour);
}

void Explain(const RecordedFrame& frame) {
  ImGui::BeginTooltip();
  ImGui::TextUnformatted(fmt::format("frame {}: {:.2f} ms, {:.2f} ms of it in plugins", frame.number,
                                     Milliseconds(frame.duration), Milliseconds(frame.plugins))
                             .c_str());
  for (std::size_t plugin = 0; plugin < frame.byPlugin.size(); ++plugin)
    if (frame.byPlugin[plugin] >= 1000)
      ColouredText(ImGui::ColorConvertU32ToFloat4(PluginColour(SignatureOf(plugin))),
                   fmt::format("{:.3f} ms  {}", Milliseconds(frame.byPlugin[plugin]), SignatureOf(plugin)));
  FaintText("click to see its calls");
  ImGui::EndTooltip();
}

void DrawBudget(const Graph& graph, Nanoseconds budget) {
  const float y = graph.Bottom() - graph.Height(budget);
  ImGui::GetWindowDrawList()->AddLine({graph.corner.x, y}, {graph.corner.x + graph.size.x, y}, kBudgetColour);
}

void DrawBars(const FrameHistory& history, const Totals& totals) {
  const Nanoseconds budget = history.Frame(history.Count() - 1).budget;
  // One very long frame, of a reload say, must not flatten all others.
  const Nanoseconds top = std::max(budget * 5 / 4, std::min(totals.longest * 21 / 20, budget * 4));
  const ImVec2 size{ImGui::GetContentRegionAvail().x, ImGui::GetFontSize() * 8.0F};
  const Graph graph{ImGui::GetCursorScreenPos(), size,
                    size.y / static_cast<float>(std::max<Nanoseconds>(top, 1))};
  ImDrawList& list = *ImGui::GetWindowDrawList();
  list.AddRectFilled(graph.corner, {graph.corner.x + size.x, graph.Bottom()},
                     ImGui::GetColorU32(ImGuiCol_FrameBg));
  ImGui::InvisibleButton("bars", size);
  const float width = size.x / static_cast<float>(FrameHistory::kFrames - 1);
  const std::size_t empty = FrameHistory::kFrames - 1 - history.Count();
  const auto leftOf = [&](std::size_t index) {
    return graph.corner.x + width * static_cast<float>(empty + index);
  };
  const float mouse = ImGui::GetIO().MousePos.x;
  for (std::size_t index = 0; index < history.Count(); ++index) {
    const RecordedFrame& frame = history.Frame(index);
    const float left = leftOf(index);
    const float right = leftOf(index + 1);
    DrawBar(frame, graph, left, right);
    const bool isPicked = gPicked && gPicked->frame.number == frame.number;
    const bool isUnderMouse = ImGui::IsItemHovered() && left <= mouse && mouse < right;
    if (isPicked || isUnderMouse)
      list.AddRectFilled({left, graph.corner.y}, {std::max(right, left + 1.0F), graph.Bottom()},
                         IM_COL32(255, 255, 255, isPicked ? 110 : 60));
    if (!isUnderMouse) continue;
    Explain(frame);
    if (ImGui::IsMouseClicked(ImGuiMouseButton_Left)) Pick(frame);
  }
  DrawBudget(graph, budget);
}

// ---- All frames -----------------------------------------------------------------------------------------

struct Line {
  std::string name;
  ImU32 colour;
  Nanoseconds sum = 0;
  Nanoseconds longest = 0;
};

void Add(Line& line, Nanoseconds time) {
  line.sum += time;
  line.longest = std::max(line.longest, time);
}

std::vector<Line> LinesOf(const FrameHistory& history) {
  std::vector<Line> lines;
  for (std::size_t plugin = 0; plugin < history.Plugins().size(); ++plugin)
    lines.push_back({SignatureOf(plugin), PluginColour(SignatureOf(plugin))});
  for (std::size_t part = 0; part + 1 < kFrameParts; ++part)
    lines.push_back({kFramePartNames[part],
                     part >= static_cast<std::size_t>(FramePart::Panels) ? kPanelsColour : kOwnColour});
  for (std::size_t index = 0; index < history.Count(); ++index) {
    const RecordedFrame& frame = history.Frame(index);
    std::size_t line = 0;
    for (std::size_t plugin = 0; plugin < history.Plugins().size(); ++plugin)
      Add(lines[line++], OfPlugin(frame, plugin));
    for (std::size_t part = 0; part + 1 < kFrameParts; ++part) Add(lines[line++], frame.parts[part]);
  }
  std::erase_if(lines, [](const Line& line) { return line.sum == 0; });
  return lines;
}

void DrawAll(const FrameHistory& history) {
  if (!ImGui::BeginTable("parts", 3, ImGuiTableFlags_ScrollY | ImGuiTableFlags_RowBg)) return;
  const float number = ImGui::GetFontSize() * 5.0F;
  ImGui::TableSetupScrollFreeze(0, 1);
  ImGui::TableSetupColumn("plugin, or part of the frame with its plugins",
                          ImGuiTableColumnFlags_WidthStretch);
  ImGui::TableSetupColumn("mean ms", ImGuiTableColumnFlags_WidthFixed, number);
  ImGui::TableSetupColumn("longest ms", ImGuiTableColumnFlags_WidthFixed, number);
  ImGui::TableHeadersRow();
  for (const Line& line : LinesOf(history)) {
    ImGui::TableNextRow();
    ImGui::TableNextColumn();
    Swatch(line.colour);
    ImGui::TextUnformatted(line.name.c_str());
    NumberCell(fmt::format("{:.3f}", Milliseconds(line.sum) / static_cast<double>(history.Count())));
    NumberCell(fmt::format("{:.3f}", Milliseconds(line.longest)));
  }
  ImGui::EndTable();
}

void Draw() {
  const FrameHistory& history = CollectedCosts();
  if (history.Count() == 0) return ImGui::TextDisabled("No frame was flown since this is shown.");
  const Totals totals = TotalsOf(history);
  DrawFigures(history, totals);
  DrawBars(history, totals);
  if (gPicked)
    DrawCallsOf(*gPicked, history);
  else
    DrawAll(history);
}

void SetShown(bool isShown) {
  CollectCosts(isShown);
  if (!isShown) gPicked.reset();
}

}  // namespace

const Panel kFramePanel{.name = "Frame", .key = 7, .draw = Draw, .setShown = SetShown};

}  // namespace sim
