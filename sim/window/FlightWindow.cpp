#include "window/FlightWindow.h"

#include <GL/gl.h>
#include <SDL.h>
#include <fmt/core.h>

#include <thread>

#include "InputError.h"
#include "host/FlightBoard.h"
#include "host/FrameDrawing.h"
#include "host/FrameParts.h"
#include "host/Pictures.h"
#include "supervise/EndRequest.h"
#include "view/Screen.h"
#include "window/UserActions.h"
#include "window/UserInterface.h"
#include "window/WindowTimes.h"

namespace sim {
namespace {

constexpr const char* kTitle = "Skyvora";

[[noreturn]] void Fail(const char* what) {
  const std::string reason = SDL_GetError();
  SDL_Quit();
  throw InputError(fmt::format("{}: {}", what, reason));
}

// Notes for whoever watches over calls into plugins, while it lasts, that it is the user who takes the time.
class StWaitForUser {
 public:
  StWaitForUser() { gBoard->waitsForUser = true; }
  ~StWaitForUser() { gBoard->waitsForUser = false; }
  StWaitForUser(const StWaitForUser&) = delete;
  StWaitForUser& operator=(const StWaitForUser&) = delete;
};

}  // namespace

FlightWindow::FlightWindow(double frameRate, const std::string& stateFolder)
    : keys([this](int digit) { userInterface->TogglePanel(digit); }), rate(frameRate) {
  if (SDL_Init(SDL_INIT_VIDEO) != 0) Fail("there is no display to open a window on");
  Open();
  userInterface = std::make_unique<UserInterface>(window, context, stateFolder);
}

void FlightWindow::Open() {
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_COMPATIBILITY);
  SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
  SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 8);
  window =
      SDL_CreateWindow(kTitle, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, gScreen.Width(),
                       gScreen.Height(), SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
  if (window == nullptr) Fail("the window cannot be opened");
  SDL_SetWindowMinimumSize(window, Screen::kSmallestSide, Screen::kSmallestSide);
  context = SDL_GL_CreateContext(window);
  if (context == nullptr) Fail("the window has no OpenGL");
  SDL_GL_SetSwapInterval(1);
  int width = 0;
  int height = 0;
  SDL_GetWindowSize(window, &width, &height);  // a small display has less room
  gScreen.Resize(width, height);
}

FlightWindow::~FlightWindow() {
  userInterface.reset();
  SDL_GL_DeleteContext(context);
  SDL_DestroyWindow(window);
  SDL_Quit();
}

// ---- Frames ---------------------------------------------------------------------------------------------

bool FlightWindow::BeginFrame() {
  if (!pacer) pacer.emplace(rate);
  if (framesDue == 0) {
    framesDue = pacer->Wait();
    BeginPart(FramePart::Input);
    TakeInput();
    FitScreen();
  }
  gPictures->SetShown(framesDue == 1 && !isHidden);
  return !isClosed;
}

void FlightWindow::EndFrame() {
  ++flownInSecond;
  if (--framesDue == 0) {
    if (!isHidden) ShowFrame();
    input.NoteDrawn();
  }
  BeginPart(FramePart::Rest);
}

void FlightWindow::ShowFrame() {
  BeginPart(FramePart::Panels);
  if (!userInterface->HasMouse()) mouse.ShowCursor(CursorOfFrame());
  userInterface->Draw();
  BeginPart(FramePart::Show);
  SDL_GL_SwapWindow(window);
  ++gWindowTimes.shownFrames;
  ++shownInSecond;
  TellTimes();
}

void FlightWindow::TellTimes() {
  const auto now = std::chrono::steady_clock::now();
  const std::chrono::duration<double> passed = now - secondBegan;
  if (passed.count() < 1.0) return;
  const bool isFirst = secondBegan == std::chrono::steady_clock::time_point{};
  secondBegan = now;
  if (!isFirst) {
    gWindowTimes.shownPerSecond = shownInSecond / passed.count();
    gWindowTimes.flownPerSecond = flownInSecond / passed.count();
    SDL_SetWindowTitle(
        window, fmt::format("{} - {:.0f} frames a second", kTitle, gWindowTimes.shownPerSecond).c_str());
  }
  shownInSecond = flownInSecond = 0;
}

// ---- Input ----------------------------------------------------------------------------------------------

void FlightWindow::TakeInput() {
  input.Poll();
  SDL_Event event;
  while (input.Next(event)) {
    const bool isPanels = userInterface->Take(event);
    if (event.type == SDL_QUIT) isClosed = true;
    if (event.type == SDL_WINDOWEVENT) Take(event.window);
    mouse.Take(event, isPanels);
    keys.Take(event, isPanels);
  }
  keys.Settle();
}

void FlightWindow::Take(const SDL_WindowEvent& event) {
  switch (event.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED:
      Do({{"resizeScreen", {{"width", event.data1}, {"height", event.data2}}}});
      break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
      keys.ReleaseAll();
      mouse.Release();
      break;
    case SDL_WINDOWEVENT_MINIMIZED:
    case SDL_WINDOWEVENT_HIDDEN:
      isHidden = true;
      break;
    case SDL_WINDOWEVENT_RESTORED:
    case SDL_WINDOWEVENT_SHOWN:
    case SDL_WINDOWEVENT_EXPOSED:
      isHidden = false;
      break;
    default:
      break;
  }
}

void FlightWindow::FitScreen() {
  int width = 0;
  int height = 0;
  SDL_GL_GetDrawableSize(window, &width, &height);
  gPictures->SetWindow(width, height);
}

// ---- Dialogs --------------------------------------------------------------------------------------------

void FlightWindow::ShowAlone(const std::function<void()>& contents) {
  SDL_PumpEvents();
  glDisable(GL_SCISSOR_TEST);
  glClearColor(0.10F, 0.14F, 0.20F, 1.0F);
  glClear(GL_COLOR_BUFFER_BIT);
  userInterface->DrawAlone(contents);
  SDL_GL_SwapWindow(window);
}

bool FlightWindow::ShowUntil(const std::function<bool()>& contents) {
  const StWaitForUser wait;
  BeginPart(FramePart::Rest);
  // The dialog sees to what happens meanwhile.
  keys.ReleaseAll();
  mouse.Release();
  bool isAnswered = false;
  while (!isAnswered && !isClosed && EndRequestedBy() == 0) {
    input.Poll();
    SDL_Event event;
    while (input.Next(event)) {
      userInterface->Take(event);
      if (event.type == SDL_QUIT) isClosed = true;
      if (event.type == SDL_WINDOWEVENT) Take(event.window);
    }
    ShowAlone([&] { isAnswered = contents(); });
    input.NoteDrawn();
    std::this_thread::sleep_for(std::chrono::milliseconds(15));
  }
  return isAnswered;
}

}  // namespace sim
