#include "window/FlightWindow.h"

#include <SDL.h>
#include <fmt/core.h>

#include "InputError.h"
#include "host/FrameParts.h"
#include "view/Screen.h"
#include "window/UserInterface.h"

namespace sim {
namespace {

[[noreturn]] void Fail(const char* what) {
  const std::string reason = SDL_GetError();
  SDL_Quit();
  throw InputError(fmt::format("{}: {}", what, reason));
}

}  // namespace

FlightWindow::FlightWindow(const std::string& stateFolder) {
  if (SDL_Init(SDL_INIT_VIDEO) != 0) Fail("there is no display to open a window on");
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_COMPATIBILITY);
  SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
  SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 8);
  window =
      SDL_CreateWindow("Skyvora", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, gScreen.Width(),
                       gScreen.Height(), SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
  if (window == nullptr) Fail("the window cannot be opened");
  context = SDL_GL_CreateContext(window);
  if (context == nullptr) Fail("the window has no OpenGL");
  SDL_GL_SetSwapInterval(1);
  userInterface = std::make_unique<UserInterface>(window, context, stateFolder);
}

FlightWindow::~FlightWindow() {
  userInterface.reset();
  SDL_GL_DeleteContext(context);
  SDL_DestroyWindow(window);
  SDL_Quit();
}

bool FlightWindow::TakeInput() {
  BeginPart(FramePart::Input);
  bool staysOpen = true;
  SDL_Event event;
  while (SDL_PollEvent(&event) != 0) {
    if (event.type == SDL_QUIT) staysOpen = false;
    userInterface->Take(event);
  }
  return staysOpen;
}

void FlightWindow::Present() {
  BeginPart(FramePart::Panels);
  userInterface->Draw();
  BeginPart(FramePart::Show);
  SDL_GL_SwapWindow(window);
  BeginPart(FramePart::Rest);
}

}  // namespace sim
