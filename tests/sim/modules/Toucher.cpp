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
#include "VYRAProcessing.h"
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

VYRAMenuID gMenu;
int gCheckItem;
int gRenameItem;

// An item's reference is what it does; the one without is there to be picked.
using Deed = void (*)();

void Check() {
  int state = VYRA_MENU_NO_CHECK;
  VYRACheckMenuItemState(gMenu, gCheckItem, &state);
  state = state == VYRA_MENU_CHECKED ? VYRA_MENU_UNCHECKED : VYRA_MENU_CHECKED;
  VYRACheckMenuItem(gMenu, gCheckItem, state);
  Tell("check %d", state);
}

void Rename() {
  VYRASetMenuItemName(gMenu, gRenameItem, "Renamed", 0);
  Tell("rename");
}

void Clear() {
  VYRAClearAllMenuItems(gMenu);
  Tell("clear");
}

void BeNamesake() { Tell("namesake"); }

void OnMenu(void* /*menuRefcon*/, void* itemRefcon) {
  if (itemRefcon == nullptr) return Tell("menu");
  reinterpret_cast<Deed>(itemRefcon)();
}

int Append(const char* name, Deed deed) {
  return VYRAAppendMenuItem(gMenu, name, reinterpret_cast<void*>(deed), 0);
}

void CreateMenu() {
  gMenu = VYRACreateMenu("Touch", nullptr, 0, OnMenu, nullptr);
  Append("Left/Right", nullptr);
  Append("Left/Right", BeNamesake);
  gCheckItem = Append("Check", Check);
  gRenameItem = Append("Rename", Rename);
  Append("Clear", Clear);
}

int OnDraw(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
  VYRABindTexture2d(77, 1);
  return 1;
}

void OnShared(void* /*refcon*/) { Tell("shared"); }

double Read(const char* name) {
  const VYRADataRef dataRef = VYRAFindDataRef(name);
  return (VYRAGetDataRefTypes(dataRef) & VYRA_TYPE_DOUBLE) != 0 ? VYRAGetDatad(dataRef)
                                                                : VYRAGetDataf(dataRef);
}

// Where the flight is, to tell whether another one comes to the same.
int OnCommand(VYRACommandRef /*command*/, int phase, void* /*refcon*/) {
  Tell("act in pass %d: phase %d, throttle %.9g, altitude %.17g m, latitude %.17g", VYRAGetCycleNumber(),
       phase, Read("sim/aircraft/throttle_ratio"), Read("sim/aircraft/altitude_m"),
       Read("sim/aircraft/latitude_deg"));
  return 1;
}

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
  CreateMenu();
  VYRARegisterDrawCallback(OnDraw, 25, 0, nullptr);
  VYRAShareData("touch/shared", 1, OnShared, nullptr);
  VYRAShareData("touch/numbers", VYRA_TYPE_FLOAT_ARRAY, nullptr, nullptr);
  VYRARegisterCommandHandler(VYRACreateCommand("touch/act", ""), OnCommand, 1, nullptr);
  return 1;
}
