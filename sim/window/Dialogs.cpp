#include "window/Dialogs.h"

#include <fmt/format.h>
#include <imgui.h>

#include <chrono>
#include <optional>

#include "report/LastEnd.h"
#include "window/FlightWindow.h"

namespace sim {
namespace {

constexpr std::chrono::seconds kUnattended{2};
const ImVec2 kButton(200.0F, 0.0F);

// In the middle of the window, around what `contents` draws.
template <class Contents>
void DrawDialog(const char* title, const Contents& contents) {
  const ImVec2 size = ImGui::GetIO().DisplaySize;
  ImGui::SetNextWindowPos({size.x / 2, size.y / 2}, ImGuiCond_Always, {0.5F, 0.5F});
  ImGui::Begin(title, nullptr,
               ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoCollapse | ImGuiWindowFlags_NoMove |
                   ImGuiWindowFlags_NoSavedSettings);
  contents();
  ImGui::End();
}

void DrawLine(const std::string& line) { ImGui::TextUnformatted(line.c_str(), line.c_str() + line.size()); }

bool IsPressed(ImGuiKey key) { return ImGui::IsKeyPressed(ImGui::GetKeyIndex(key), false); }

bool IsEnterPressed() { return IsPressed(ImGuiKey_Enter) || IsPressed(ImGuiKey_KeyPadEnter); }

void DrawLastEnd(const LastEnd& end) {
  DrawLine(fmt::format("The last flight here, on {}, was ended by a plugin:", end.date));
  ImGui::Spacing();
  DrawLine(fmt::format("    {}  ({})", end.name, end.signature));
  DrawLine(fmt::format("    {}{}", end.result, end.call.empty() ? "" : " in its call for: " + end.call));
  DrawLine("    " + end.path);
  ImGui::Spacing();
}

}  // namespace

void ShowStatus(FlightWindow& window, const std::string& text) {
  window.ShowAlone([&] { DrawDialog("Loading", [&] { DrawLine(text); }); });
}

void ShowMessage(FlightWindow& window, std::span<const std::string> lines, bool waitsForUser) {
  const auto begin = std::chrono::steady_clock::now();
  window.ShowUntil([&] {
    bool isRead = !waitsForUser && std::chrono::steady_clock::now() - begin > kUnattended;
    DrawDialog("Message", [&] {
      for (const std::string& line : lines) DrawLine(line);
      ImGui::Spacing();
      isRead |= ImGui::Button("OK", kButton) || IsEnterPressed() || IsPressed(ImGuiKey_Escape);
    });
    return isRead;
  });
}

LastEndChoice AskAboutLastEnd(FlightWindow& window, const LastEnd& end) {
  std::optional<LastEndChoice> choice;
  window.ShowUntil([&] {
    DrawDialog("Before the flight", [&] {
      DrawLastEnd(end);
      if (ImGui::Button("Fly without it", kButton) || IsEnterPressed()) choice = LastEndChoice::FlyWithout;
      ImGui::SameLine();
      if (ImGui::Button("Fly with it all the same", kButton)) choice = LastEndChoice::FlyWithAll;
      ImGui::SameLine();
      if (ImGui::Button("Leave", kButton) || IsPressed(ImGuiKey_Escape)) choice = LastEndChoice::Leave;
    });
    return choice.has_value();
  });
  return choice.value_or(LastEndChoice::Leave);
}

}  // namespace sim
