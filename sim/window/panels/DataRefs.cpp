// All datarefs, however many: only those that can be seen are read.
#include <fmt/format.h>
#include <imgui.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/Inventory.h"
#include "host/PluginList.h"
#include "window/Panel.h"
#include "window/PinnedDataRefs.h"
#include "window/Search.h"
#include "window/ValueField.h"
#include "window/WidgetPlaces.h"
#include "window/Widgets.h"

namespace sim {
namespace {

constexpr const char* kPanel = "Datarefs";
constexpr double kSecondsBetweenLists = 0.5;
constexpr float kDetailsShare = 0.4F;  // of the height

std::string gSearch;
std::vector<VYRADataRefInfo> gListed;  // those that the search finds
double gListedUntil = 0.0;
std::string gSelected;  // the name; empty for none

void List() {
  if (ImGui::GetTime() < gListedUntil) return;
  gListedUntil = ImGui::GetTime() + kSecondsBetweenLists;
  gListed = PublishedDataRefs();
  std::erase_if(gListed, [](const VYRADataRefInfo& dataRef) { return !Finds(gSearch, dataRef.name); });
}

void DrawPinBox(const ValuePlace& place) {
  bool isPinned = IsPinned(place);
  ImGui::PushID("pin");
  if (ImGui::Checkbox("##pin", &isPinned)) {
    if (isPinned)
      Pin(place);
    else
      Unpin(place);
  }
  MarkWidget(kPanel, "pin " + PlaceText(place));
  ImGui::PopID();
}

// ---- The list ---------------------------------------------------------------------------------------------

void DrawRow(const VYRADataRefInfo& dataRef) {
  const ValuePlace place{.name = dataRef.name};
  ImGui::PushID(dataRef.name);
  ImGui::TableNextRow();
  ImGui::TableNextColumn();
  DrawPinBox(place);
  ImGui::TableNextColumn();
  if (ImGui::Selectable(dataRef.name, gSelected == dataRef.name)) gSelected = dataRef.name;
  MarkWidget(kPanel, place.name);
  ImGui::TableNextColumn();
  DrawValue(kPanel, place, dataRef.types, dataRef.isWritable != 0);
  TextCell(TypeNames(dataRef.types));
  TextCell(dataRef.isWritable != 0 ? "yes" : "no");
  TextCell(OwnerOf(dataRef.owner));
  ImGui::PopID();
}

void DrawTable(float height) {
  constexpr ImGuiTableFlags kFlags = ImGuiTableFlags_RowBg | ImGuiTableFlags_Resizable |
                                     ImGuiTableFlags_ScrollY | ImGuiTableFlags_BordersInnerV;
  if (!ImGui::BeginTable("datarefs", 6, kFlags, {0.0F, height})) return;
  ImGui::TableSetupScrollFreeze(0, 1);
  ImGui::TableSetupColumn("pin", ImGuiTableColumnFlags_WidthFixed);
  ImGui::TableSetupColumn("name", ImGuiTableColumnFlags_WidthStretch, 4.0F);
  ImGui::TableSetupColumn("value", ImGuiTableColumnFlags_WidthStretch, 3.0F);
  ImGui::TableSetupColumn("type", ImGuiTableColumnFlags_WidthStretch, 1.5F);
  ImGui::TableSetupColumn("writable", ImGuiTableColumnFlags_WidthFixed);
  ImGui::TableSetupColumn("owner", ImGuiTableColumnFlags_WidthStretch, 2.0F);
  ImGui::TableHeadersRow();
  DrawVisibleRows(gListed.size(), [](std::size_t row) { DrawRow(gListed[row]); });
  ImGui::EndTable();
}

// ---- The one that is selected -----------------------------------------------------------------------------

void DrawElement(const VYRADataRefInfo& dataRef, int index) {
  const ValuePlace place{.name = dataRef.name, .element = index};
  ImGui::PushID(index);
  ImGui::TableNextRow();
  ImGui::TableNextColumn();
  DrawPinBox(place);
  ImGui::TableNextColumn();
  ImGui::Text("[%d]", index);
  ImGui::TableNextColumn();
  DrawValue(kPanel, place, dataRef.types, dataRef.isWritable != 0);
  ImGui::PopID();
}

void DrawElements(const VYRADataRefInfo& dataRef, int count) {
  if (!ImGui::BeginTable("elements", 3, ImGuiTableFlags_RowBg)) return;
  ImGui::TableSetupColumn("", ImGuiTableColumnFlags_WidthFixed);
  ImGui::TableSetupColumn("", ImGuiTableColumnFlags_WidthFixed);
  ImGui::TableSetupColumn("", ImGuiTableColumnFlags_WidthStretch);
  DrawVisibleRows(static_cast<std::size_t>(count),
                  [&](std::size_t index) { DrawElement(dataRef, static_cast<int>(index)); });
  ImGui::EndTable();
}

void DrawDetails(const VYRADataRefInfo& dataRef) {
  ImGui::TextUnformatted(dataRef.name);
  if (const DataRefRow* const own = OwnDataRefRow(dataRef)) {
    ImGui::TextWrapped("%s%s%s", own->description.c_str(), own->unit.empty() ? "" : ", in ",
                       own->unit.c_str());
  }
  const std::optional<DataRefValue> value = ReadDataRef(dataRef.name);
  if (!value) return;
  if (const auto* const numbers = std::get_if<std::vector<double>>(&*value))
    DrawElements(dataRef, static_cast<int>(numbers->size()));
}

void DrawSelected(const VYRADataRefInfo& dataRef) {
  if (ImGui::BeginChild("details", {0.0F, 0.0F}, true)) DrawDetails(dataRef);
  ImGui::EndChild();
}

void Draw() {
  DrawPinned(kPanel);
  if (DrawSearch(kPanel, gSearch)) gListedUntil = 0.0;
  List();
  ImGui::SameLine();
  ImGui::Text("%zu", gListed.size());
  DrawProblem(WriteProblem());
  const auto selected =
      std::ranges::find_if(gListed, [](const VYRADataRefInfo& dataRef) { return gSelected == dataRef.name; });
  const bool isSelected = selected != gListed.end();
  DrawTable(isSelected ? -kDetailsShare * ImGui::GetContentRegionAvail().y : 0.0F);
  if (isSelected) DrawSelected(*selected);
}

void SetShown(bool isShown) {
  gListedUntil = 0.0;
  if (isShown) return;
  gListed = {};
  EndEditing();
  ForgetPlots();
}

}  // namespace

const Panel kDataRefsPanel{.name = kPanel, .key = 2, .draw = Draw, .setShown = SetShown};

}  // namespace sim
