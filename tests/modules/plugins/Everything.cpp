// A plugin that registers one of everything and counts its calls. Built WITH_FAULTS it commits the fault that
// it is named after: see Faults.cpp.
#include "Everything.h"

#include <cstdio>
#include <cstring>

#include "EverythingPlugin.h"
#include "VYRACamera.h"
#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAMenus.h"
#include "VYRAPlanes.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "VYRAScenery.h"
#include "VYRAUtilities.h"

char gName[64];
StartTexts gStartTexts;

namespace {

Tally gTally;
VYRAWindowID gWindow;

int Note(Call call, int result = 1) {
  ++gTally[static_cast<std::size_t>(call)];
#ifdef WITH_FAULTS
  return CommitFault(call, result);
#else
  return result;
#endif
}

int Place() { return VYRAGetMyID(); }

// ---- The callbacks ---------------------------------------------------------------------------------------

float OnLoop(float, float, int, void*) { return static_cast<float>(-Note(Call::loop)); }
float OnLateLoop(float, float, int, void*) { return static_cast<float>(-Note(Call::lateLoop)); }
int OnDraw(int, int, void*) { return Note(Call::draw); }
void OnDrawWindow(VYRAWindowID, void*) { Note(Call::drawWindow); }
int OnCursor(VYRAWindowID, int, int, void*) { return Note(Call::cursor); }
int OnWheel(VYRAWindowID, int, int, int, int, void*) { return Note(Call::wheel); }
void OnHotKey(void*) { Note(Call::hotKey); }
void OnMenu(void*, void*) { Note(Call::menu); }
int OnCommand(VYRACommandRef, int, void*) { return Note(Call::command); }
int OnRead(void*) { return Note(Call::read); }
void OnWrite(void*, int) { Note(Call::write); }
void OnChanged(void*) { Note(Call::changed); }
void OnError(const char*) { Note(Call::error); }
void OnPlanesReturned(void*) { Note(Call::planesReturned); }

int OnMouse(VYRAWindowID window, int, int, int status, void*) {
  if (status != VYRA_MOUSE_DOWN) return 1;
  VYRATakeKeyboardFocus(window);
  return Note(Call::mouse);
}

void OnKey(VYRAWindowID, char, int, char, void*, int losingFocus) {
  Note(losingFocus != 0 ? Call::losingFocus : Call::key);
}

int OnSniffKey(char, int flags, char virtualKey, void*) {
  return virtualKey == Place() && flags == 0 ? Note(Call::sniffKey) : 1;
}

void OnObjectReady(VYRAObjectRef object, void*) {
  // Inside, it cannot be unloaded yet; so what the round before brought goes.
  static VYRAObjectRef before = nullptr;
  if (before != nullptr) VYRAUnloadObject(before);
  before = object;
  Note(Call::objectReady);
}

int OnCamera(VYRACameraPosition*, int isLosingControl, void*) {
  return isLosingControl != 0 ? 0 : Note(Call::camera);
}

// ---- Registering -----------------------------------------------------------------------------------------

void RegisterFlightLoops() {
  VYRARegisterFlightLoopCallback(OnLoop, -1, nullptr);
  const VYRAFlightLoopParams late = {sizeof(late), VYRA_FLIGHT_LOOP_PHASE_1, OnLateLoop, nullptr};
  VYRAScheduleFlightLoop(VYRACreateFlightLoop(&late), -1, 0);
}

void RegisterDataRefs() {
  char name[128];
  std::snprintf(name, sizeof(name), "test/everything/%d", Place());
  VYRARegisterDataAccessor(name, VYRA_TYPE_INT, 1, OnRead, OnWrite, nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  VYRAShareData("test/shared", VYRA_TYPE_INT, OnChanged, nullptr);
}

void RegisterWindow() {
  VYRAWindowCreateParams window{};
  window.structSize = sizeof(window);
  window.left = kPlaceSize * Place();
  window.right = window.left + kPlaceSize;
  window.top = kPlaceSize;
  window.visible = 1;
  window.draw = OnDrawWindow;
  window.handleMouseClick = OnMouse;
  window.handleKey = OnKey;
  window.handleCursor = OnCursor;
  window.handleMouseWheel = OnWheel;
  gWindow = VYRACreateWindowEx(&window);
}

void RegisterDisplay() {
  VYRARegisterDrawCallback(OnDraw, 5, 1, nullptr);
  VYRARegisterKeySniffer(OnSniffKey, 1, nullptr);
  VYRARegisterHotKey(static_cast<char>(Place()), kHotKeyFlags, "Everything", OnHotKey, nullptr);
  RegisterWindow();
}

void RegisterMenu() {
  char name[32];
  std::snprintf(name, sizeof(name), "Item %d", Place());
  VYRAAppendMenuItem(VYRACreateMenu("Everything", nullptr, 0, OnMenu, nullptr), name, nullptr, 0);
}

void RegisterCommand() {
  const VYRACommandRef command = VYRACreateCommand("test/command", "A command");
  VYRARegisterCommandHandler(command, OnCommand, 1, nullptr);
  static bool isHeld = false;
  if (!isHeld) VYRACommandBegin(command);
  isHeld = true;
  VYRACommandButtonPress(Place());
}

// What a plugin cannot have twice is asked for anew in each round.
void Prepare() {
  VYRADestroyFlightLoop(nullptr);  // an error
  VYRAAcquirePlanes(nullptr, OnPlanesReturned, nullptr);
  VYRALoadObjectAsync("test.obj", OnObjectReady, nullptr);
}

// Until a plugin has named itself, the library calls it after its place below the plugins folder.
void TakeNameFromPlace() {
  char place[VYRA_PLUGIN_INFO_SIZE] = "";
  VYRAGetPluginInfo(VYRAGetMyID(), place, nullptr, nullptr, nullptr);
  std::snprintf(gName, sizeof(gName), "%.*s", static_cast<int>(std::strcspn(place, "/.")), place);
}

void WriteStartTexts() {
  if (gStartTexts.name == nullptr) return;
  std::snprintf(gStartTexts.name, VYRA_PLUGIN_INFO_SIZE, "%s", gName);
  std::snprintf(gStartTexts.signature, VYRA_PLUGIN_INFO_SIZE, "test.%s", gName);
  std::snprintf(gStartTexts.description, VYRA_PLUGIN_INFO_SIZE, "Has one of everything");
}

#ifdef WITH_FAULTS
class GlobalObject {
 public:
  GlobalObject() {
    TakeNameFromPlace();
    Note(Call::construct);
  }
  ~GlobalObject() { Note(Call::destroy); }
} gGlobalObject;
#endif

}  // namespace

void RegisterEverything() {
  VYRASetErrorCallback(OnError);
  RegisterFlightLoops();
  RegisterDataRefs();
  RegisterDisplay();
  RegisterMenu();
  RegisterCommand();
  VYRACreateProbe(VYRA_PROBE_VERTICAL);
  VYRALoadObject("test.obj");
}

void UnregisterEverything() {
  VYRAUnregisterFlightLoopCallback(OnLoop, nullptr);
  VYRAUnregisterFlightLoopCallback(OnLateLoop, nullptr);
  VYRAUnregisterDrawCallback(OnDraw, 5, 1, nullptr);
  VYRAUnregisterKeySniffer(OnSniffKey, 1, nullptr);
  VYRADestroyWindow(gWindow);
  VYRAUnshareData("test/shared", VYRA_TYPE_INT, OnChanged, nullptr);
  VYRAUnregisterCommandHandler(VYRAFindCommand("test/command"), OnCommand, 1, nullptr);
  for (int i = VYRACountHotKeys() - 1; i >= 0; --i) {
    VYRAPluginID owner = VYRA_NO_PLUGIN;
    VYRAGetHotKeyInfo(VYRAGetNthHotKey(i), nullptr, nullptr, nullptr, &owner);
    if (owner == VYRAGetMyID()) VYRAUnregisterHotKey(VYRAGetNthHotKey(i));
  }
}

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  TakeNameFromPlace();
  gStartTexts = {outName, outSignature, outDescription};
  RegisterEverything();
  const int result = Note(Call::start);
  WriteStartTexts();
  return result;
}

VYRA_PLUGIN_EXPORT int VyPluginEnable(void) { return Note(Call::enable); }
VYRA_PLUGIN_EXPORT void VyPluginDisable(void) { Note(Call::disable); }

VYRA_PLUGIN_EXPORT void VyPluginStop(void) {
  VYRACommandButtonRelease(Place());  // which nobody does for a plugin that goes
  Note(Call::stop);
}

VYRA_PLUGIN_EXPORT void VyPluginReceiveMessage(VYRAPluginID, int message, void* param) {
  switch (message) {
    case kMessageAskTally:
      *static_cast<Tally*>(param) = gTally;
      gTally = {};
      break;
    case kMessagePrepare:
      Prepare();
      break;
    case kMessageTakeCamera:
      VYRAControlCamera(VYRA_CAMERA_UNTIL_VIEW_CHANGES, OnCamera, nullptr);
      break;
    case VYRA_MESSAGE_HOST_101:
      Note(Call::message);
      break;
    default:
      break;
  }
}
