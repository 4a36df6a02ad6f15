#include "window/Look.h"

#include <SDL.h>
#include <imgui.h>
#include <imgui/imgui_freetype.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "view/Fonts.h"

namespace sim {
namespace {

constexpr float kPlainDensity = 96.0F;  // dots per inch
constexpr float kFontSize = 13.0F;

ImFont* gMonospaced = nullptr;

// What the DejaVu fonts have of the letters in names and texts, and the signs that panels use.
constexpr std::array<ImWchar, 15> kLetters{0x0020, 0x024F, 0x0370, 0x03FF, 0x0400, 0x04FF, 0x2010, 0x205E,
                                           0x2190, 0x21FF, 0x2200, 0x22FF, 0x25A0, 0x25FF, 0};

ImFont* AddFont(const char* name, float size) {
  return ImGui::GetIO().Fonts->AddFontFromFileTTF(FontFile(name).c_str(), size, nullptr, kLetters.data());
}

void MakeFonts(float density, float pixelsPerPoint) {
  ImGuiIO& io = ImGui::GetIO();
  io.Fonts->Clear();
  io.Fonts->FontBuilderIO = ImGuiFreeType::GetBuilderForFreeType();
  const float size = std::round(kFontSize * density * pixelsPerPoint);
  AddFont("DejaVuSans.ttf", size);
  gMonospaced = AddFont("DejaVuSansMono.ttf", size);
  io.FontGlobalScale = 1.0F / pixelsPerPoint;
}

ImVec4 Accent(float strength) { return {0.27F, 0.50F, 0.72F, strength}; }
ImVec4 Grey(float brightness, float alpha = 1.0F) {
  return {brightness * 0.95F, brightness, brightness * 1.08F, alpha};
}

void SetColours(ImGuiStyle& style) {
  ImGui::StyleColorsDark(&style);
  const auto set = [&](ImGuiCol_ which, const ImVec4& colour) { style.Colors[which] = colour; };
  set(ImGuiCol_Text, Grey(0.90F));
  set(ImGuiCol_TextDisabled, {kFaint.red, kFaint.green, kFaint.blue, 1.0F});
  set(ImGuiCol_WindowBg, Grey(0.10F, 0.95F));
  set(ImGuiCol_PopupBg, Grey(0.12F, 0.98F));
  set(ImGuiCol_MenuBarBg, Grey(0.13F, 0.95F));
  set(ImGuiCol_Border, Grey(0.26F));
  set(ImGuiCol_FrameBg, Grey(0.17F));
  set(ImGuiCol_FrameBgHovered, Grey(0.22F));
  set(ImGuiCol_FrameBgActive, Grey(0.26F));
  set(ImGuiCol_TitleBg, Grey(0.14F));
  set(ImGuiCol_TitleBgActive, Grey(0.20F));
  set(ImGuiCol_TitleBgCollapsed, Grey(0.14F, 0.85F));
  set(ImGuiCol_ScrollbarBg, Grey(0.10F, 0.0F));
  set(ImGuiCol_ScrollbarGrab, Grey(0.28F));
  set(ImGuiCol_CheckMark, Accent(1.0F));
  set(ImGuiCol_SliderGrab, Accent(0.9F));
  set(ImGuiCol_SliderGrabActive, Accent(1.0F));
  set(ImGuiCol_Button, Grey(0.22F));
  set(ImGuiCol_ButtonHovered, Accent(0.75F));
  set(ImGuiCol_ButtonActive, Accent(1.0F));
  set(ImGuiCol_Header, Accent(0.35F));
  set(ImGuiCol_HeaderHovered, Accent(0.50F));
  set(ImGuiCol_HeaderActive, Accent(0.70F));
  set(ImGuiCol_Separator, Grey(0.26F));
  set(ImGuiCol_Tab, Grey(0.16F));
  set(ImGuiCol_TabHovered, Accent(0.70F));
  set(ImGuiCol_TabActive, Accent(0.50F));
  set(ImGuiCol_TableHeaderBg, Grey(0.16F));
  set(ImGuiCol_TableBorderStrong, Grey(0.26F));
  set(ImGuiCol_TableBorderLight, Grey(0.19F));
  set(ImGuiCol_TableRowBgAlt, Grey(1.0F, 0.025F));
  set(ImGuiCol_TextSelectedBg, Accent(0.45F));
}

}  // namespace

float DensityOf(SDL_Window* window) {
  float dotsPerInch = kPlainDensity;
  if (SDL_GetDisplayDPI(SDL_GetWindowDisplayIndex(window), &dotsPerInch, nullptr, nullptr) != 0) return 1.0F;
  // Displays tell their size in rounded figures, or not at all: what is a little denser is drawn as ever.
  return std::clamp(std::floor(dotsPerInch / kPlainDensity * 2.0F + 0.1F) / 2.0F, 1.0F, 3.0F);
}

void SetLook(float density, float pixelsPerPoint) {
  MakeFonts(density, pixelsPerPoint);
  ImGuiStyle style;
  SetColours(style);
  style.WindowPadding = {8.0F, 7.0F};
  style.FramePadding = {6.0F, 3.0F};
  style.CellPadding = {5.0F, 2.0F};
  style.ItemSpacing = {7.0F, 5.0F};
  style.ItemInnerSpacing = {5.0F, 4.0F};
  style.ScrollbarSize = 12.0F;
  style.WindowRounding = 4.0F;
  style.FrameRounding = 3.0F;
  style.GrabRounding = 3.0F;
  style.PopupRounding = 3.0F;
  style.ScrollbarRounding = 6.0F;
  style.WindowTitleAlign = {0.0F, 0.5F};
  // It would need a texture that is blended between its pixels, which that of the letters is not.
  style.AntiAliasedLinesUseTex = false;
  style.WindowMenuButtonPosition = ImGuiDir_None;
  style.ScaleAllSizes(density);
  ImGui::GetStyle() = style;
}

ImFont* MonospacedFont() { return gMonospaced; }

}  // namespace sim
