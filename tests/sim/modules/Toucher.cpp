// Has one of everything that a user can touch, and tells in the log what is done to it.
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAGraphics.h"
#include "VYRAMenus.h"
#include "VYRAPlugin.h"
#include "VYRAUtilities.h"

namespace {

constexpr int kWheelCursor = 7;
constexpr char kF4 = 0x73;

VYRAWindowID gWindow;

[[gnu::format(printf, 1, 2)]] void Tell(const char* format, ...) {
  char text[256];
  std::va_list values;
  va_start(values, format);
  std::vsnprintf(text, sizeof(text), format, values);
  va_end(values);
  VYRADebugString(("toucher: " + std::string(text) + "\n").c_str());
}

int OnMouse(VYRAWindowID window, int x, int y, int status, void* /*refcon*/) {
  Tell("mouse %d at %d, %d", status, x, y);
  if (status == VYRA_MOUSE_DOWN) VYRATakeKeyboardFocus(window);
  return 1;
}

void OnWindowKey(VYRAWindowID /*window*/, char key, int flags, char virtualKey, void* /*refcon*/,
                 int isLosingFocus) {
  if (isLosingFocus == 0) Tell("window key %d, flags %d, virtual %d", key, flags, virtualKey & 0xFF);
}

int OnWheel(VYRAWindowID /*window*/, int /*x*/, int /*y*/, int wheel, int clicks, void* /*refcon*/) {
  Tell("wheel %d by %d", wheel, clicks);
  return 1;
}

int OnCursor(VYRAWindowID /*window*/, int /*x*/, int /*y*/, void* /*refcon*/) { return kWheelCursor; }

int OnSniff(char key, int flags, char virtualKey, void* /*refcon*/) {
  Tell("key %d, flags %d, virtual %d", key, flags, virtualKey & 0xFF);
  return 1;
}

void OnHotKey(void* /*refcon*/) { Tell("hot key"); }

void OnMenu(void* /*menuRefcon*/, void* itemRefcon) { Tell(itemRefcon == nullptr ? "menu" : "namesake"); }

int OnDraw(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
  VYRABindTexture2d(77, 1);
  return 1;
}

void OnShared(void* /*refcon*/) { Tell("shared"); }

int OnCommand(VYRACommandRef /*command*/, int /*phase*/, void* /*refcon*/) { return 1; }

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "Toucher");
  std::strcpy(outSignature, "org.skyvora.test.toucher");
  std::strcpy(outDescription, "Has one of everything that a user can touch.");
  VYRAWindowCreateParams window{};
  window.structSize = sizeof(window);
  window.left = 100;
  window.top = 200;
  window.right = 300;
  window.bottom = 100;
  window.visible = 1;
  window.handleMouseClick = OnMouse;
  window.handleKey = OnWindowKey;
  window.handleCursor = OnCursor;
  window.handleMouseWheel = OnWheel;
  gWindow = VYRACreateWindowEx(&window);
  VYRARegisterKeySniffer(OnSniff, 1, nullptr);
  VYRARegisterHotKey(kF4, 3, "Touches", OnHotKey, nullptr);
  VYRAMenuID menu = VYRACreateMenu("Touch", nullptr, 0, OnMenu, nullptr);
  VYRAAppendMenuItem(menu, "Left/Right", nullptr, 0);
  VYRAAppendMenuItem(menu, "Left/Right", &gWindow, 0);
  VYRARegisterDrawCallback(OnDraw, 25, 0, nullptr);
  VYRAShareData("touch/shared", 1, OnShared, nullptr);
  VYRAShareData("touch/numbers", VYRA_TYPE_FLOAT_ARRAY, nullptr, nullptr);
  VYRARegisterCommandHandler(VYRACreateCommand("touch/act", ""), OnCommand, 1, nullptr);
  return 1;
}
