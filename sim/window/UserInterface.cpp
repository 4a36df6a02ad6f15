#include "window/UserInterface.h"

#include <GL/gl.h>
#include <SDL.h>
#include <imgui.h>
#include <imgui/backends/imgui_impl_opengl2.h>
#include <imgui/backends/imgui_impl_sdl.h>

#include <algorithm>
#include <cfloat>
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

std::optional<std::size_t> ButtonOf(const SDL_MouseButtonEvent& event) {
  switch (event.button) {
    case SDL_BUTTON_LEFT:
      return ImGuiMouseButton_Left;
    case SDL_BUTTON_RIGHT:
      return ImGuiMouseButton_Right;
    case SDL_BUTTON_MIDDLE:
      return ImGuiMouseButton_Middle;
    default:
      return std::nullopt;
  }
}

// Those that were held with the key, and not those that are held by now.
void FollowModifiers(const SDL_Keysym& keysym) {
  ImGuiIO& io = ImGui::GetIO();
  io.KeyShift = (keysym.mod & KMOD_SHIFT) != 0;
  io.KeyCtrl = (keysym.mod & KMOD_CTRL) != 0;
  io.KeyAlt = (keysym.mod & KMOD_ALT) != 0;
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

void UserInterface::Follow(const SDL_Event& event) {
  switch (event.type) {
    case SDL_MOUSEMOTION:
      mouse.x = event.motion.x;
      mouse.y = event.motion.y;
      mouse.isOutside = false;
      break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      if (const std::optional<std::size_t> button = ButtonOf(event.button))
        mouse.isDown[*button] = event.type == SDL_MOUSEBUTTONDOWN;
      break;
    case SDL_WINDOWEVENT:
      if (event.window.event == SDL_WINDOWEVENT_LEAVE) mouse.isOutside = true;
      if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST) mouse.isDown = {};
      break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      FollowModifiers(event.key.keysym);
      break;
    default:
      break;
  }
}

// A button that is held keeps the mouse, wherever that goes.
void UserInterface::PlaceMouse() const {
  ImGuiIO& io = ImGui::GetIO();
  const bool isHeld = std::ranges::find(mouse.isDown, true) != mouse.isDown.end();
  io.MousePos = mouse.isOutside && !isHeld ? ImVec2(-FLT_MAX, -FLT_MAX)
                                           : ImVec2(static_cast<float>(mouse.x), static_cast<float>(mouse.y));
  std::ranges::copy(mouse.isDown, io.MouseDown);
}

bool UserInterface::Take(const SDL_Event& event) {
  if (TakeCapturedKey(event)) return true;
  ImGui_ImplSDL2_ProcessEvent(&event);
  Follow(event);
  const ImGuiIO& io = ImGui::GetIO();
  switch (event.type) {
    case SDL_MOUSEMOTION:
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEWHEEL:
      return io.WantCaptureMouse;
    case SDL_KEYDOWN:
    case SDL_TEXTINPUT:
      // A field that was left wants it still until the next frame is drawn.
      return io.WantTextInput && ImGui::IsAnyItemActive();
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
  PlaceMouse();
  ImGui::NewFrame();
  contents();
  ImGui::Render();
  ImGui_ImplOpenGL2_RenderDrawData(ImGui::GetDrawData());
}

void UserInterface::TogglePanel(int key) { panels->Toggle(key); }

}  // namespace sim
