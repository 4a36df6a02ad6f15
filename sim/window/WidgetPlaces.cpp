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

std::string gLines;    // of this frame
std::string gWritten;  // what the file has

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

// Whoever reads the file finds all of a frame, and never a part.
void WriteWidgetPlaces() {
  if (FileName() == nullptr) return;
  if (gLines != gWritten) {
    const std::string unfinished = std::string(FileName()) + ".new";
    std::ofstream(unfinished) << gLines;
    std::filesystem::rename(unfinished, FileName());
    gWritten = gLines;
  }
  gLines.clear();
}

}  // namespace sim
