#include "window/PinnedDataRefs.h"

#include <fmt/format.h>
#include <imgui.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <vector>

#include "VYRADataAccess.h"
#include "window/WidgetPlaces.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr std::size_t kPlottedFrames = 600;
constexpr float kPlotHeight = 2.6F;  // lines of text

struct Pinned {
  ValuePlace place;
  std::array<float, kPlottedFrames> values{};  // a ring
  std::size_t count = 0;                       // that were ever written
  int lastFrame = -1;
};

std::vector<Pinned> gPinned;

std::vector<Pinned>::iterator Find(const ValuePlace& place) {
  return std::ranges::find(gPinned, place, &Pinned::place);
}

void Sample(Pinned& pinned) {
  if (pinned.lastFrame == gWorld.frame) return;
  pinned.lastFrame = gWorld.frame;
  if (const std::optional<double> number = ReadNumber(pinned.place))
    pinned.values[pinned.count++ % kPlottedFrames] = static_cast<float>(*number);
}

void DrawPlot(const Pinned& pinned) {
  if (pinned.count == 0) return;
  const std::size_t shown = std::min(pinned.count, kPlottedFrames);
  const std::size_t first = pinned.count < kPlottedFrames ? 0 : pinned.count % kPlottedFrames;
  const auto [least, most] =
      std::minmax_element(pinned.values.begin(), pinned.values.begin() + static_cast<std::ptrdiff_t>(shown));
  ImGui::PlotLines("##plot", pinned.values.data(), static_cast<int>(shown), static_cast<int>(first),
                   fmt::format("{:.6g} to {:.6g}", *least, *most).c_str(), FLT_MAX, FLT_MAX,
                   {ImGui::GetContentRegionAvail().x, kPlotHeight * ImGui::GetFontSize()});
}

// False when it is to go.
bool DrawRow(const char* panel, Pinned& pinned) {
  const std::string name = PlaceText(pinned.place);
  const VYRADataRef dataRef = VYRAFindDataRef(pinned.place.name.c_str());
  Sample(pinned);
  ImGui::PushID(name.c_str());
  ImGui::TableNextRow();
  ImGui::TableNextColumn();
  const bool stays = !ImGui::SmallButton("-");
  MarkWidget(panel, "unpin " + name);
  ImGui::TableNextColumn();
  ImGui::TextUnformatted(name.c_str());
  ImGui::TableNextColumn();
  // A place of its own, beside the same value further down.
  DrawValue("Datarefs/pinned", pinned.place, VYRAGetDataRefTypes(dataRef), VYRACanWriteDataRef(dataRef) != 0);
  ImGui::TableNextColumn();
  DrawPlot(pinned);
  ImGui::PopID();
  return stays;
}

}  // namespace

bool IsPinned(const ValuePlace& place) { return Find(place) != gPinned.end(); }

void Pin(const ValuePlace& place) {
  if (!IsPinned(place)) gPinned.push_back({.place = place});
}

void Unpin(const ValuePlace& place) {
  if (const auto found = Find(place); found != gPinned.end()) gPinned.erase(found);
}

void DrawPinned(const char* panel) {
  constexpr ImGuiTableFlags kFlags =
      ImGuiTableFlags_RowBg | ImGuiTableFlags_Resizable | ImGuiTableFlags_BordersInnerV;
  if (gPinned.empty() || !ImGui::BeginTable("pinned", 4, kFlags)) return;
  ImGui::TableSetupColumn("", ImGuiTableColumnFlags_WidthFixed);
  ImGui::TableSetupColumn("", ImGuiTableColumnFlags_WidthStretch, 3.0F);
  ImGui::TableSetupColumn("", ImGuiTableColumnFlags_WidthStretch, 2.0F);
  ImGui::TableSetupColumn("", ImGuiTableColumnFlags_WidthStretch, 4.0F);
  std::erase_if(gPinned, [panel](Pinned& pinned) { return !DrawRow(panel, pinned); });
  ImGui::EndTable();
}

void ForgetPlots() {
  for (Pinned& pinned : gPinned) pinned.count = 0;
}

}  // namespace sim
