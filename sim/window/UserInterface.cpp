#include "window/UserInterface.h"

#include <SDL.h>
#include <imgui.h>
#include <imgui/backends/imgui_impl_opengl2.h>
#include <imgui/backends/imgui_impl_sdl.h>

#include <vector>

#include "window/Panel.h"

namespace sim {
namespace {

struct OpenPanel {
  const Panel* panel;
  bool isShown = false;
};

std::vector<OpenPanel> gPanels;

void Show(OpenPanel& open, bool isShown) {
  if (open.isShown == isShown) return;
  open.isShown = isShown;
  if (open.panel->setShown != nullptr) open.panel->setShown(isShown);
}

void DrawPanel(OpenPanel& open) {
  if (!open.isShown) return;
  bool staysShown = true;
  ImGui::SetNextWindowSize({420.0F, 320.0F}, ImGuiCond_FirstUseEver);
  if (ImGui::Begin(open.panel->name, &staysShown)) open.panel->draw();
  ImGui::End();
  Show(open, staysShown);
}

void DrawMenuBar() {
  if (!ImGui::BeginMainMenuBar()) return;
  if (ImGui::BeginMenu("View")) {
    for (OpenPanel& open : gPanels) {
      bool isShown = open.isShown;
      if (ImGui::MenuItem(open.panel->name, nullptr, &isShown)) Show(open, isShown);
    }
    ImGui::EndMenu();
  }
  ImGui::EndMainMenuBar();
}

}  // namespace

UserInterface::UserInterface(SDL_Window* window, void* openGlContext) {
  IMGUI_CHECKVERSION();
  ImGui::CreateContext();
  ImGui::StyleColorsDark();
  ImGui_ImplSDL2_InitForOpenGL(window, openGlContext);
  ImGui_ImplOpenGL2_Init();
  for (const Panel& panel : Panels()) gPanels.push_back({.panel = &panel});
}

UserInterface::~UserInterface() {
  for (OpenPanel& open : gPanels) Show(open, false);
  gPanels.clear();
  ImGui_ImplOpenGL2_Shutdown();
  ImGui_ImplSDL2_Shutdown();
  ImGui::DestroyContext();
}

bool UserInterface::Take(const SDL_Event& event) {
  ImGui_ImplSDL2_ProcessEvent(&event);
  const ImGuiIO& io = ImGui::GetIO();
  switch (event.type) {
    case SDL_MOUSEMOTION:
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEWHEEL:
      return io.WantCaptureMouse;
    case SDL_KEYDOWN:
    case SDL_TEXTINPUT:
      return io.WantTextInput;
    default:
      return false;
  }
}

void UserInterface::Draw() {
  ImGui_ImplOpenGL2_NewFrame();
  ImGui_ImplSDL2_NewFrame();
  ImGui::NewFrame();
  DrawMenuBar();
  for (OpenPanel& open : gPanels) DrawPanel(open);
  ImGui::Render();
  ImGui_ImplOpenGL2_RenderDrawData(ImGui::GetDrawData());
}

void UserInterface::TogglePanel(int key) {
  for (OpenPanel& open : gPanels)
    if (open.panel->key == key) Show(open, !open.isShown);
}

}  // namespace sim
