// A window in the left bottom corner that tells in the log of everything that reaches it. A click gives it
// the keyboard, the key R in it reloads all plugins, S never returns, and VYRA_TEST_CRASH lets the flight
// loop write to nowhere.
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "VYRAUtilities.h"

namespace {

__attribute__((format(printf, 1, 2))) void Tell(const char* format, ...) {
  char text[256];
  va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(text, sizeof(text) - 1, format, arguments);
  va_end(arguments);
  text[length] = '\n';
  text[length + 1] = '\0';
  VYRADebugString(text);
}

int OnMouse(VYRAWindowID window, int x, int y, int status, void* /*refcon*/) {
  static int lastX = -1;
  static int lastY = -1;
  // A mouse that is held still is dragged in every frame.
  if (status != VYRA_MOUSE_DRAG || x != lastX || y != lastY)
    Tell("listener: mouse %d at %d, %d", status, x, y);
  lastX = x;
  lastY = y;
  if (status == VYRA_MOUSE_DOWN) VYRATakeKeyboardFocus(window);
  return 1;
}

void OnKey(VYRAWindowID /*window*/, char key, int flags, char virtualKey, void* /*refcon*/, int losingFocus) {
  if (losingFocus != 0) return;
  Tell("listener: key %d, flags %d, virtual key %d", static_cast<unsigned char>(key), flags,
       static_cast<unsigned char>(virtualKey));
  if (virtualKey == 'R' && flags == 0) VYRAReloadPlugins();
  if (virtualKey == 'S')
    for (;;) pause();
}

int OnWheel(VYRAWindowID /*window*/, int /*x*/, int /*y*/, int wheel, int clicks, void* /*refcon*/) {
  Tell("listener: wheel %d by %d", wheel, clicks);
  return 1;
}

float Fly(float /*sinceLastCall*/, float /*sinceLastLoop*/, int /*counter*/, void* /*refcon*/) {
  static int lastWidth = 0;
  static int lastHeight = 0;
  int width = 0;
  int height = 0;
  VYRAGetScreenSize(&width, &height);
  if (width != lastWidth || height != lastHeight) Tell("listener: screen %d by %d", width, height);
  lastWidth = width;
  lastHeight = height;
  if (std::getenv("VYRA_TEST_CRASH") != nullptr) *static_cast<volatile int*>(nullptr) = 1;
  return -1.0F;
}

}  // namespace

extern "C" int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "Listener");
  std::strcpy(outSignature, "org.skyvora.test.listener");
  std::strcpy(outDescription, "Tells of everything that reaches its window.");
  const VYRAWindowCreateParams params{.structSize = sizeof(VYRAWindowCreateParams),
                                      .left = 0,
                                      .top = 200,
                                      .right = 200,
                                      .bottom = 0,
                                      .visible = 1,
                                      .draw = [](VYRAWindowID, void*) {},
                                      .handleMouseClick = OnMouse,
                                      .handleKey = OnKey,
                                      .handleCursor = nullptr,
                                      .handleMouseWheel = OnWheel,
                                      .refcon = nullptr};
  VYRACreateWindowEx(&params);
  VYRARegisterFlightLoopCallback(Fly, -1.0F, nullptr);
  return 1;
}
extern "C" void VyPluginStop(void) {}
extern "C" int VyPluginEnable(void) { return 1; }
extern "C" void VyPluginDisable(void) {}
extern "C" void VyPluginReceiveMessage(VYRAPluginID, int, void*) {}
