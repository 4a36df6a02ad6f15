// The plugins: their state, what they cost of the frame, what they registered; and switching them on and off.
#include <fmt/format.h>
#include <imgui.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "VYRAWatch.h"
#include "host/LoadWatch.h"
#include "host/PluginList.h"
#include "report/CostBlock.h"
#include "window/Panel.h"
#include "window/PluginColours.h"
#include "window/Registrations.h"
#include "window/UserActions.h"
#include "window/Widgets.h"
#include "window/costs/CostCollection.h"

namespace sim {
namespace {

constexpr int kFramesBetweenLooks = 60;

struct Choice {
  std::string signature;  // of the plugin whose details are shown; empty for none
  std::vector<Registrations> registered;
  int framesUntilNextLook = 0;
};
Choice gChoice;

// ---- Costs ----------------------------------------------------------------------------------------------

std::optional<std::size_t> NumberOf(const std::string& path) {
  const auto& plugins = CollectedCosts().Plugins();
  const auto found = std::ranges::find(plugins, path, &FrameHistory::Plugin::path);
  if (found == plugins.end()) return std::nullopt;
  return static_cast<std::size_t>(found - plugins.begin());
}

struct Cost {
  std::vector<Nanoseconds> times;  // a frame each, the oldest first
  Nanoseconds sum = 0;
  Nanoseconds longest = 0;
};

Cost CostOf(const std::string& path) {
  const FrameHistory& history = CollectedCosts();
  const std::optional<std::size_t> number = NumberOf(path);
  Cost cost;
  cost.times.reserve(history.Count());
  for (std::size_t index = 0; index < history.Count(); ++index) {
    const std::vector<std::uint32_t>& byPlugin = history.Frame(index).byPlugin;
    const Nanoseconds time = number && *number < byPlugin.size() ? byPlugin[*number] : 0;
    cost.times.push_back(time);
    cost.sum += time;
    cost.longest = std::max(cost.longest, time);
  }
  return cost;
}

Nanoseconds BudgetNow() {
  const FrameHistory& history = CollectedCosts();
  return history.Count() == 0 ? 0 : history.Frame(history.Count() - 1).budget;
}

// The height of all graphs as a part of the budget: the same for all, so that they can be compared, and a
// round one.
double GraphTop(Nanoseconds longest, Nanoseconds budget) {
  constexpr std::array kSteps{0.001, 0.002, 0.005, 0.01, 0.02, 0.05, 0.1, 0.2, 0.5};
  const double share = static_cast<double>(longest) / static_cast<double>(std::max<Nanoseconds>(budget, 1));
  const auto found = std::ranges::lower_bound(kSteps, share);
  return found != kSteps.end() ? *found : 1.0;
}

// A column of pixels shows the longest of its frames, so that a spike is never lost.
void DrawGraph(const Cost& cost, double top, ImU32 colour) {
  const ImVec2 corner = ImGui::GetCursorScreenPos();
  const ImVec2 size{ImGui::GetContentRegionAvail().x, ImGui::GetTextLineHeight()};
  ImDrawList& list = *ImGui::GetWindowDrawList();
  const float bottom = corner.y + size.y;
  list.AddRectFilled(corner, {corner.x + size.x, bottom}, ImGui::GetColorU32(ImGuiCol_FrameBg));
  const int columns = std::max(static_cast<int>(size.x), 1);
  const std::size_t empty = FrameHistory::kFrames - cost.times.size();
  for (int column = 0; column < columns; ++column) {
    const auto edge = [&](int at) {
      return static_cast<std::size_t>(at) * FrameHistory::kFrames / static_cast<std::size_t>(columns);
    };
    Nanoseconds longest = 0;
    for (std::size_t slot = std::max(edge(column), empty);
         slot < std::max(edge(column + 1), edge(column) + 1); ++slot)
      if (slot - empty < cost.times.size()) longest = std::max(longest, cost.times[slot - empty]);
    if (longest == 0) continue;
    const double share = std::min(static_cast<double>(longest) / top, 1.0);
    const float x = corner.x + static_cast<float>(column);
    list.AddRectFilled({x, bottom - std::max(1.0F, static_cast<float>(share) * size.y)}, {x + 1.0F, bottom},
                       colour);
  }
  ImGui::Dummy(size);
}

// ---- The table ------------------------------------------------------------------------------------------

void Choose(const std::string& signature) {
  gChoice = {.signature = signature == gChoice.signature ? "" : signature, .registered = {}};
}

void DrawName(const PluginInfo& plugin) {
  const float side = ImGui::GetFontSize() * 0.7F;
  ImVec2 corner = ImGui::GetCursorScreenPos();
  corner.y += (ImGui::GetTextLineHeight() - side) * 0.5F;
  if (ImGui::Selectable("##name", plugin.signature == gChoice.signature, ImGuiSelectableFlags_None))
    Choose(plugin.signature);
  if (ImGui::IsItemHovered()) ImGui::SetTooltip("%s\n%s", plugin.signature.c_str(), plugin.path.c_str());
  ImGui::GetWindowDrawList()->AddRectFilled(corner, {corner.x + side, corner.y + side},
                                            PluginColour(plugin.signature), side * 0.2F);
  ImGui::SameLine(side * 1.6F);
  if (plugin.enabled)
    ImGui::TextUnformatted(plugin.name.c_str());
  else
    ImGui::TextDisabled("%s", plugin.name.c_str());
}

void DrawSwitch(const PluginInfo& plugin) {
  bool isEnabled = plugin.enabled;
  ImGui::PushStyleVar(ImGuiStyleVar_FramePadding, {1.0F, 0.0F});
  if (ImGui::Checkbox("##enabled", &isEnabled))
    Do({{isEnabled ? "enablePlugin" : "disablePlugin", plugin.signature}});
  ImGui::PopStyleVar();
  if (ImGui::IsItemHovered()) ImGui::SetTooltip(plugin.enabled ? "enabled" : "disabled");
}

void DrawRow(const PluginInfo& plugin, const Cost& cost, double top) {
  ImGui::PushID(plugin.signature.c_str());
  ImGui::TableNextRow();
  ImGui::TableNextColumn();
  DrawSwitch(plugin);
  ImGui::TableNextColumn();
  DrawName(plugin);
  ImGui::TableNextColumn();
  DrawGraph(cost, top, PluginColour(plugin.signature));
  const auto frames = static_cast<double>(std::max<std::size_t>(cost.times.size(), 1));
  NumberCell(fmt::format("{:.3f}", Milliseconds(cost.sum) / frames));
  NumberCell(fmt::format("{:.3f}", Milliseconds(cost.longest)));
  const std::optional<Nanoseconds> load = LoadTimeOf(plugin.path);
  NumberCell(load ? fmt::format("{:.1f}", Milliseconds(*load)) : "");
  ImGui::PopID();
}

std::vector<PluginInfo> Plugins() {
  std::vector<PluginInfo> plugins = ListPlugins();
  std::erase_if(plugins, [](const PluginInfo& plugin) { return plugin.id == VYRA_HOST_PLUGIN; });
  return plugins;
}

void DrawTable(const std::vector<PluginInfo>& plugins) {
  std::vector<Cost> costs;
  Nanoseconds longest = 0;
  for (const PluginInfo& plugin : plugins) {
    costs.push_back(CostOf(plugin.path));
    longest = std::max(longest, costs.back().longest);
  }
  const Nanoseconds budget = BudgetNow();
  const double share = GraphTop(longest, budget);
  FaintText(fmt::format("graphs: the last {} frames, up to {:g} % of the time that a frame has",
                        CollectedCosts().Count(), share * 100));
  constexpr ImGuiTableFlags kFlags =
      ImGuiTableFlags_RowBg | ImGuiTableFlags_Resizable | ImGuiTableFlags_BordersInnerV;
  if (!ImGui::BeginTable("plugins", 6, kFlags)) return;
  const float number = ImGui::GetFontSize() * 3.7F;
  ImGui::TableSetupColumn("on", ImGuiTableColumnFlags_WidthFixed, ImGui::GetFontSize() * 1.5F);
  ImGui::TableSetupColumn("plugin", ImGuiTableColumnFlags_WidthStretch, 0.8F);
  ImGui::TableSetupColumn("cost", ImGuiTableColumnFlags_WidthStretch, 1.0F);
  ImGui::TableSetupColumn("mean ms", ImGuiTableColumnFlags_WidthFixed, number);
  ImGui::TableSetupColumn("most ms", ImGuiTableColumnFlags_WidthFixed, number);
  ImGui::TableSetupColumn("load ms", ImGuiTableColumnFlags_WidthFixed, number);
  ImGui::TableHeadersRow();
  for (std::size_t row = 0; row < plugins.size(); ++row)
    DrawRow(plugins[row], costs[row], share * static_cast<double>(std::max<Nanoseconds>(budget, 1)));
  ImGui::EndTable();
}

// ---- One plugin -----------------------------------------------------------------------------------------

struct KindOfCall {
  std::size_t calls = 0;
  Nanoseconds own = 0;
};

void DrawCalls(const PluginInfo& plugin) {
  const FrameHistory& history = CollectedCosts();
  const std::optional<std::size_t> number = NumberOf(plugin.path);
  std::map<int, KindOfCall> kinds;
  for (std::size_t index = 0; number && index < history.Count(); ++index)
    for (const RecordedCall& call : history.Frame(index).calls)
      if (call.plugin == *number) {
        KindOfCall& kind = kinds[call.kind];
        ++kind.calls;
        kind.own += call.own;
      }
  if (kinds.empty()) return ImGui::TextDisabled("not called in the last frames");
  const auto frames = static_cast<double>(history.Count());
  for (const auto& [kind, calls] : kinds)
    ImGui::BulletText("%s", fmt::format("{}: {} calls, {:.3f} ms per frame", VYRAGetCallKindName(kind),
                                        calls.calls, Milliseconds(calls.own) / frames)
                                .c_str());
}

void DrawRegistered(const PluginInfo& plugin) {
  if (--gChoice.framesUntilNextLook <= 0) {
    gChoice.registered = RegisteredBy(plugin);
    gChoice.framesUntilNextLook = kFramesBetweenLooks;
  }
  bool hasAny = false;
  for (const Registrations& of : gChoice.registered) {
    if (of.lines.empty()) continue;
    hasAny = true;
    if (!ImGui::TreeNode(of.kind, "%s: %zu", of.kind, of.lines.size())) continue;
    for (const std::string& line : of.lines) ImGui::BulletText("%s", line.c_str());
    ImGui::TreePop();
  }
  if (!hasAny) ImGui::TextDisabled("nothing that has a list");
}

void DrawDetails(const PluginInfo& plugin) {
  ImGui::Separator();
  ImGui::TextUnformatted(plugin.name.c_str());
  ImGui::SameLine();
  ImGui::TextDisabled("%s, %s", plugin.signature.c_str(), plugin.enabled ? "enabled" : "disabled");
  if (!ImGui::BeginTable("details", 2, ImGuiTableFlags_BordersInnerV)) return;
  ImGui::TableNextColumn();
  ImGui::TextDisabled("registered");
  DrawRegistered(plugin);
  ImGui::TableNextColumn();
  ImGui::TextDisabled("called for");
  DrawCalls(plugin);
  ImGui::EndTable();
}

void DrawLoadFailures() {
  for (const LoadFailure& failure : LoadFailures()) {
    ImGui::PushStyleColor(ImGuiCol_Text, Shade(kBad));
    ImGui::TextWrapped("not loaded: %s: %s", failure.path.c_str(), failure.reason.c_str());
    ImGui::PopStyleColor();
  }
}

void Draw() {
  const std::vector<PluginInfo> plugins = Plugins();
  if (ImGui::SmallButton("Reload all")) Do({{"reloadPlugins", true}});
  ImGui::SameLine();
  const auto enabled = std::ranges::count(plugins, true, &PluginInfo::enabled);
  ImGui::TextDisabled("%zu plugins, %td enabled; click one to see what it registered", plugins.size(),
                      enabled);
  if (ImGui::BeginChild("list")) {
    DrawTable(plugins);
    const auto chosen = std::ranges::find(plugins, gChoice.signature, &PluginInfo::signature);
    if (chosen != plugins.end()) DrawDetails(*chosen);
    DrawLoadFailures();
  }
  ImGui::EndChild();
}

}  // namespace

const Panel kPluginsPanel{.name = "Plugins", .key = 1, .draw = Draw, .setShown = CollectCosts};

}  // namespace sim
