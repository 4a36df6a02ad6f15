// All commands: who handles them, and two buttons that press them.
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <imgui.h>
#include <imgui/imgui_stdlib.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/CommandServices.h"
#include "host/Inventory.h"
#include "host/PluginList.h"
#include "window/Ask.h"
#include "window/Panel.h"
#include "window/Search.h"
#include "window/WidgetPlaces.h"
#include "window/Widgets.h"

namespace sim {
namespace {

constexpr const char* kPanel = "Commands";
constexpr double kSecondsBetweenLists = 0.5;

std::string gSearch;
std::string gProblem;
std::string gHeld;                 // the command that the mouse holds; empty for none
std::vector<CommandInfo> gListed;  // those that the search finds
double gListedUntil = 0.0;

void List() {
  if (ImGui::GetTime() < gListedUntil) return;
  gListedUntil = ImGui::GetTime() + kSecondsBetweenLists;
  gListed.clear();
  for (CommandInfo& command : ListCommands())
    if (Finds(gSearch, command.name) || Finds(gSearch, command.description))
      gListed.push_back(std::move(command));
}

void Release() {
  if (!gHeld.empty()) Ask({{"releaseCommand", gHeld}}, gProblem);
  gHeld.clear();
}

// Held for as long as the mouse's button is.
void DrawHold(const std::string& name) {
  ImGui::SmallButton("Hold");
  MarkWidget(kPanel, "hold " + name);
  if (ImGui::IsItemActivated()) {
    Release();
    Ask({{"pressCommand", name}}, gProblem);
    gHeld = name;
  }
  if (ImGui::IsItemDeactivated() && gHeld == name) Release();
}

std::string HandlersText(VYRACommandRef command) {
  std::vector<std::string> texts;
  for (const VYRACommandHandlerInfo& handler : CommandHandlers(command))
    texts.push_back(
        fmt::format("{} ({})", OwnerOf(handler.plugin), handler.isBefore != 0 ? "before" : "after"));
  return fmt::format("{}", fmt::join(texts, ", "));
}

void DrawCell(const std::string& text) {
  TextCell(text);
  if (!text.empty() && ImGui::IsItemHovered()) ImGui::SetTooltip("%s", text.c_str());
}

void DrawRow(const CommandInfo& command) {
  ImGui::PushID(command.name.c_str());
  ImGui::TableNextRow();
  ImGui::TableNextColumn();
  if (ImGui::SmallButton("Press")) Ask({{"command", {{"name", command.name}, {"passes", 1}}}}, gProblem);
  MarkWidget(kPanel, "press " + command.name);
  ImGui::SameLine();
  DrawHold(command.name);
  DrawCell(command.name);
  DrawCell(HandlersText(command.command));
  DrawCell(OwnerOfPath(command.ownerPath));
  DrawCell(command.description);
  ImGui::PopID();
}

// Only the rows that can be seen are asked for what they show.
void DrawTable() {
  constexpr ImGuiTableFlags kFlags = ImGuiTableFlags_RowBg | ImGuiTableFlags_Resizable |
                                     ImGuiTableFlags_ScrollY | ImGuiTableFlags_BordersInnerV;
  if (!ImGui::BeginTable("commands", 5, kFlags)) return;
  ImGui::TableSetupScrollFreeze(0, 1);
  ImGui::TableSetupColumn("", ImGuiTableColumnFlags_WidthFixed);
  ImGui::TableSetupColumn("command", ImGuiTableColumnFlags_WidthStretch, 3.0F);
  ImGui::TableSetupColumn("handled by", ImGuiTableColumnFlags_WidthStretch, 2.5F);
  ImGui::TableSetupColumn("made by", ImGuiTableColumnFlags_WidthStretch, 2.0F);
  ImGui::TableSetupColumn("description", ImGuiTableColumnFlags_WidthStretch, 4.0F);
  ImGui::TableHeadersRow();
  DrawVisibleRows(gListed.size(), [](std::size_t row) { DrawRow(gListed[row]); });
  ImGui::EndTable();
}

void Draw() {
  if (DrawSearch(kPanel, gSearch)) gListedUntil = 0.0;
  List();
  ImGui::SameLine();
  ImGui::Text("%zu", gListed.size());
  DrawProblem(gProblem);
  DrawTable();
}

void SetShown(bool isShown) {
  gListedUntil = 0.0;
  if (isShown) return;
  Release();
  gListed = {};
}

}  // namespace

const Panel kCommandsPanel{.name = kPanel, .key = 3, .draw = Draw, .setShown = SetShown};

}  // namespace sim
