#include "window/UserInterface.h"

#include <GL/gl.h>
#include <SDL.h>
#include <imgui.h>
#include <imgui/backends/imgui_impl_opengl2.h>
#include <imgui/backends/imgui_impl_sdl.h>

#include <cstdint>

#include "VYRAWatch.h"
#include "report/Log.h"
#include "window/KeyCapture.h"
#include "window/Look.h"
#include "window/MenuBar.h"
#include "window/WidgetPlaces.h"

namespace sim {
namespace {

// The module whose code runs; "" while it is the simulator's own.
const char* RunningModule() {
  VYRARunningCall call{};
  return VYRAGetRunningCalls(&call, 1) > 0 ? call.path : "";
}

// Letters are made as large as they are drawn, pixel by pixel: there is nothing to blend between them, which
// costs a processor that draws without a card a good part of a frame.
void SharpenFonts() {
  const auto texture = reinterpret_cast<std::uintptr_t>(ImGui::GetIO().Fonts->TexID);
  glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture));
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glBindTexture(GL_TEXTURE_2D, 0);
}

float PixelsPerPoint(SDL_Window* window) {
  int points = 0;
  int pixels = 0;
  SDL_GetWindowSize(window, &points, nullptr);
  SDL_GL_GetDrawableSize(window, &pixels, nullptr);
  return points > 0 && pixels > points ? static_cast<float>(pixels) / static_cast<float>(points) : 1.0F;
}

// Over the flight, plugins say what the pointer looks like.
void LeavePointer(bool isPlugins) {
  ImGuiConfigFlags& flags = ImGui::GetIO().ConfigFlags;
  flags = isPlugins ? flags | ImGuiConfigFlags_NoMouseCursorChange
                    : flags & ~ImGuiConfigFlags_NoMouseCursorChange;
}

}  // namespace

UserInterface::UserInterface(SDL_Window* theWindow, void* openGlContext, const std::string& stateFolder)
    : window(theWindow) {
  IMGUI_CHECKVERSION();
  ImGui::CreateContext();
  ImGui::GetIO().IniFilename = nullptr;  // what is remembered stands in the state folder
  ImGui_ImplSDL2_InitForOpenGL(window, openGlContext);
  ImGui_ImplOpenGL2_Init();
  gLog->NoteWriters(RunningModule);
  panels.emplace(stateFolder);
}

UserInterface::~UserInterface() {
  panels.reset();
  ImGui_ImplOpenGL2_Shutdown();
  ImGui_ImplSDL2_Shutdown();
  ImGui::DestroyContext();
}

// The window may be moved to a denser display.
void UserInterface::FitToDisplay() {
  const float nowDensity = DensityOf(window);
  const float nowPixelsPerPoint = PixelsPerPoint(window);
  if (nowDensity == density && nowPixelsPerPoint == pixelsPerPoint) return;
  density = nowDensity;
  pixelsPerPoint = nowPixelsPerPoint;
  SetLook(density, pixelsPerPoint);
  ImGui_ImplOpenGL2_DestroyFontsTexture();
  ImGui_ImplOpenGL2_CreateFontsTexture();
  SharpenFonts();
}

bool UserInterface::Take(const SDL_Event& event) {
  if (TakeCapturedKey(event)) return true;
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

bool UserInterface::HasMouse() const { return ImGui::GetIO().WantCaptureMouse; }

void UserInterface::Draw() {
  DrawAlone([this] {
    DrawMenuBar([this] { panels->DrawMenu(); });
    panels->Draw(density);
    WriteWidgetPlaces();
  });
}

void UserInterface::DrawAlone(const std::function<void()>& contents) {
  FitToDisplay();
  LeavePointer(!HasMouse());
  ImGui_ImplOpenGL2_NewFrame();
  ImGui_ImplSDL2_NewFrame();
  ImGui::NewFrame();
  contents();
  ImGui::Render();
  ImGui_ImplOpenGL2_RenderDrawData(ImGui::GetDrawData());
}

void UserInterface::TogglePanel(int key) { panels->Toggle(key); }

}  // namespace sim
