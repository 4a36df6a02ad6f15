#include "host/FrameDrawing.h"

#include <algorithm>
#include <array>
#include <vector>

#include "VYRAHost.h"
#include "VYRAWatch.h"
#include "host/FlightBoard.h"
#include "host/FrameParts.h"
#include "host/GraphicsServices.h"
#include "host/Pictures.h"
#include "host/PlaneServices.h"
#include "host/SpeechServices.h"
#include "view/DrawnScene.h"
#include "view/Fonts.h"
#include "view/Screen.h"
#include "view/gl/FramePainter.h"
#include "view/gl/Surface.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr int kLastStep = 26;
constexpr int kBeforeGround = 2;
constexpr int kBeforeRunways = 4;
constexpr int kBeforeShip = 6;
constexpr int kBeforePlanes = 10;
constexpr int kEndOfScene = 12;
constexpr int kWindows = 20;

int gCursor = 0;

// The windows that lie on the screen now, for what is drawn below them. The list is asked for when all are
// drawn, as they may move while they are drawn.
void NoteWindows() {
  static std::vector<VYRAWindowInfo> infos;
  const auto room = static_cast<int>(infos.size());
  const int count = VYRAGetWindows(infos.data(), room);
  if (count > room) {
    infos.resize(static_cast<std::size_t>(count));
    VYRAGetWindows(infos.data(), count);
  }
  for (int index = 0; index < count; ++index) {
    const VYRAWindowInfo& info = infos[static_cast<std::size_t>(index)];
    if (info.isShown == 0) continue;
    gScreen.AddWindow(info.window,
                      {.left = info.left, .bottom = info.bottom, .right = info.right, .top = info.top});
  }
}

void DrawWindows() {
  CallHook("VYRADoDrawingHook", VYRADoDrawingHook, kWindows, 0);
  // Here and nowhere later, before anything else calls plugins: the step has walked the windows from the
  // back, and until they are walked from the front a new window would hide all but the back-most one.
  gCursor = CallHook("VYRACursorHook", VYRACursorHook, gScreen.mouseX, gScreen.mouseY);
  NoteWindows();
  gScreen.SetLevel(Level::AboveWindows);
}

// What was spoken, in the middle of the screen's foot.
void ShowSpeech() {
  constexpr int kBaseline = 40;
  constexpr int kMargin = 10;
  if (!IsSpeechShown()) return;
  const Font& font = FontOf(0);
  const int width = font.Width(LastSpeech());
  const int x = std::max((gScreen.Width() - width) / 2, kMargin);
  ShowBox({.left = x - kMargin,
           .bottom = kBaseline - font.Descent() - kMargin,
           .right = x + width + kMargin,
           .top = kBaseline + font.Ascent() + kMargin});
  ShowText(LastSpeech(), x, kBaseline, {.wrapWidth = gScreen.Width() - 2 * kMargin});
}

// What a plugin's drawing of a step begins with.
void SetStateOf(int step) {
  if (gPainter == nullptr) return;
  if (step <= kEndOfScene)
    gPainter->SetSceneState();
  else
    gPainter->SetSurfaceState();
}

void DrawPlanes() {
  const std::size_t drawnByPlugins = gDrawnScene.planes.size();
  DrawOtherPlanes();
  if (!IsPainting()) return;
  gPainter->SetSceneState();
  for (std::size_t index = drawnByPlugins; index < gDrawnScene.planes.size(); ++index)
    gPainter->DrawPlane(gDrawnScene.planes[index], gWorld);
}

// The simulator's own part of a phase, behind the step that comes before it.
void DrawOwnPart(int step) {
  if (!IsPainting()) return;
  if (step == kBeforeGround) gPainter->DrawGround(gWorld);
  if (step == kBeforeRunways) gPainter->DrawRunways(gWorld);
  if (step == kBeforeShip) gPainter->DrawShip(gWorld);
}

void NoteBeginOf(int step) {
  if (step == 1) BeginPart(FramePart::Scene);
  if (step == kEndOfScene + 1) BeginPart(FramePart::Surface);
  if (step == kWindows) BeginPart(FramePart::Windows);
  if (step == kWindows + 1) BeginPart(FramePart::Above);
}

void GoThroughSteps() {
  bool drawsPlanes = true;
  for (int step = 1; step <= kLastStep; ++step) {
    NoteBeginOf(step);
    SetStateOf(step);
    if (step == kWindows) {
      DrawWindows();
      continue;
    }
    const bool drawsItself = CallHook("VYRADoDrawingHook", VYRADoDrawingHook, step, 0) != 0;
    if (drawsItself) DrawOwnPart(step);
    if (step == kBeforePlanes) drawsPlanes = drawsItself;
    // Only now is it known which of them plugins drew.
    if (step == kEndOfScene && drawsPlanes) DrawPlanes();
  }
}

}  // namespace

void DrawFrame() {
  gScreen.Begin();
  ForgetTexturesBoundInFrame();
  gDrawnScene.objects.clear();
  gDrawnScene.planes.clear();
  if (gPictures != nullptr) gPictures->BeginFrame();
  GoThroughSteps();
  SetStateOf(kLastStep);
  ShowSpeech();
  if (gPictures != nullptr) gPictures->EndFrame();
  gScreen.End();
}

int CursorOfFrame() { return gCursor; }

}  // namespace sim
