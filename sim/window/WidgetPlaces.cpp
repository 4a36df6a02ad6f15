#include "window/WidgetPlaces.h"

#include <fmt/format.h>
#include <imgui.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace sim {
namespace {

const char* FileName() {
  static const char* const kName = std::getenv("VYRA_SIM_WIDGETS");
  return kName;
}

std::string gLines;  // of this frame
int gFrame = 0;

}  // namespace

void MarkWidget(std::string_view panel, std::string_view name) {
  if (FileName() == nullptr || !ImGui::IsItemVisible()) return;
  const ImVec2 least = ImGui::GetItemRectMin();
  const ImVec2 most = ImGui::GetItemRectMax();
  // What reaches beyond its column or its panel cannot be clicked there.
  const ImVec2 clipLeast = ImGui::GetWindowDrawList()->GetClipRectMin();
  const ImVec2 clipMost = ImGui::GetWindowDrawList()->GetClipRectMax();
  fmt::format_to(std::back_inserter(gLines), "{:.0f} {:.0f} {:.0f} {:.0f} {}/{}\n",
                 std::max(least.x, clipLeast.x), std::max(least.y, clipLeast.y), std::min(most.x, clipMost.x),
                 std::min(most.y, clipMost.y), panel, name);
}

void MarkField(std::string_view panel, std::string_view name, std::string_view text) {
  MarkWidget(panel, name);
  if (FileName() != nullptr) MarkWidget(panel, fmt::format("{}: {}", name, text));
}

// Whoever reads the file finds all of a frame, and never a part.
void WriteWidgetPlaces() {
  if (FileName() == nullptr) return;
  const std::string unfinished = std::string(FileName()) + ".new";
  std::ofstream(unfinished) << "frame " << ++gFrame << '\n' << gLines;
  std::filesystem::rename(unfinished, FileName());
  gLines.clear();
}

}  // namespace sim
