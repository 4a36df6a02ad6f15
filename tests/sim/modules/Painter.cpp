// Draws texts and boxes: below two windows, in them, above them, off the screen and out of turn. Beside them
// it draws with OpenGL of its own: a triangle, and a square with a texture.
#include <GL/gl.h>

#include <cstring>

#include "VYRADisplay.h"
#include "VYRAGraphics.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "VYRAUtilities.h"

namespace {

constexpr int kPhaseBelow = 40;
constexpr int kPhaseOfWindows = 50;

struct Pane {
  const char* text;
  int left, top, right, bottom;
  VYRAWindowID id;
};
Pane gBack{"in the back one", 100, 400, 300, 300, nullptr};
Pane gFront{"in the front one", 150, 420, 400, 250, nullptr};

void Text(const char* text, int x, int y, int* wrapWidth = nullptr) {
  float yellow[3] = {1.0F, 1.0F, 0.0F};
  VYRADrawString(yellow, x, y, const_cast<char*>(text), wrapWidth, 0);
}

void DrawPane(VYRAWindowID /*window*/, void* refcon) {
  const Pane& pane = *static_cast<Pane*>(refcon);
  VYRADrawTranslucentDarkBox(pane.left, pane.top, pane.right, pane.bottom);
  Text(pane.text, pane.left + 10, 350);
}

void DrawTriangle() {
  glColor3f(1.0F, 0.0F, 1.0F);
  glBegin(GL_TRIANGLES);
  glVertex2i(800, 600);
  glVertex2i(900, 600);
  glVertex2i(850, 700);
  glEnd();
}

void DrawTexture() {
  static int texture = 0;
  if (texture == 0) {
    VYRAGenerateTextureNumbers(&texture, 1);
    VYRABindTexture2d(texture, 0);
    const unsigned char green[3] = {0, 255, 0};
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, 1, 1, 0, GL_RGB, GL_UNSIGNED_BYTE, green);
  }
  VYRASetGraphicsState(1, 0, 0, 0, 0, 0, 0);
  VYRABindTexture2d(texture, 0);
  glColor3f(1.0F, 1.0F, 1.0F);
  glRecti(1000, 600, 1100, 700);
  VYRASetGraphicsState(0, 0, 0, 0, 0, 0, 0);
}

int DrawBelow(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
  int width = 120;
  Text("below the front one", 200, 320);
  Text("beside the windows", 600, 320);
  DrawTriangle();
  DrawTexture();
  Text("far away", -5000, -9000);
  Text("this text is too long for one line of it", 600, 600, &width);
  float white[3] = {1.0F, 1.0F, 1.0F};
  VYRADrawNumber(white, 600, 200, -12.345, 5, 2, 0, 3);
  return 1;
}

int DrawAbove(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
  Text("above all windows", 200, 270);
  return 1;
}

float FlightLoop(float /*sinceLastCall*/, float /*elapsed*/, int /*counter*/, void* /*refcon*/) {
  Text("out of turn", 600, 500);
  return -1.0F;
}

int Raise(VYRACommandRef /*command*/, int phase, void* /*refcon*/) {
  if (phase == VYRA_COMMAND_PHASE_BEGIN) VYRABringWindowToFront(gBack.id);
  return 1;
}

void Open(Pane& pane) {
  pane.id =
      VYRACreateWindow(pane.left, pane.top, pane.right, pane.bottom, 1, DrawPane, nullptr, nullptr, &pane);
}

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "Painter");
  std::strcpy(outSignature, "org.skyvora.test.painter");
  std::strcpy(outDescription, "Draws texts and boxes.");
  Open(gBack);
  Open(gFront);
  VYRARegisterDrawCallback(DrawBelow, kPhaseBelow, 1, nullptr);
  VYRARegisterDrawCallback(DrawAbove, kPhaseOfWindows, 0, nullptr);
  VYRARegisterFlightLoopCallback(FlightLoop, -1.0F, nullptr);
  VYRARegisterCommandHandler(VYRACreateCommand("painter/raise", "Raise the window in the back"), Raise, 1,
                             nullptr);
  return 1;
}

VYRA_PLUGIN_EXPORT void VyPluginStop() {}
