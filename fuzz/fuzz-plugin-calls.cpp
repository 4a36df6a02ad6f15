// Lets a handful of plugins do what the fuzzer's bytes say: publish and take back datarefs, share data, run
// flight loops, draw, open windows, take keys, message, enable, disable and unload each other, all of it also
// from inside each other's callbacks. The sanitizers watch; what must hold after each call is checked here.
#include <dlfcn.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "RecordingHost.h"
#include "VYRADataAccess.h"
#include "VYRADisplayInternal.h"
#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderLifecycle.h"
#include "VYRALoaderLifecycleHooks.h"
#include "VYRAProcessing.h"
#include "VYRAProcessingInternal.h"

namespace {

constexpr int kDeepest = 6;
constexpr int kMostPlugins = 40;
constexpr std::array kNames = {"fuzz/a", "fuzz/b", "fuzz/c", "fuzz/d"};
constexpr std::array kTypes = {VYRA_TYPE_INT,         VYRA_TYPE_FLOAT,     VYRA_TYPE_DOUBLE,
                               VYRA_TYPE_FLOAT_ARRAY, VYRA_TYPE_INT_ARRAY, VYRA_TYPE_DATA};

const std::uint8_t* gBytes = nullptr;
std::size_t gLeft = 0;
int gDepth = 0;
std::array<VYRADataRef, kNames.size()> gHandles = {};
std::array<VYRAFlightLoopID, 4> gLoops = {};
std::array<VYRAWindowID, 6> gWindowHandles = {};
std::array<VYRAHotKeyID, 4> gHotKeyHandles = {};

void Act();

int Byte() {
  if (gLeft == 0) return 0;
  --gLeft;
  return *gBytes++;
}

void Require(bool condition) {
  if (!condition) std::abort();
}

// What a callback does: a few more of the fuzzer's steps, and then everything is as it was.
void Nested() {
  if (gDepth >= kDeepest) return;
  const VYRAPluginID self = VYRAGetMyID();
  ++gDepth;
  for (int steps = Byte() % 4; steps > 0; --steps) Act();
  --gDepth;
  Require(VYRAGetMyID() == self);
}

int ReadInt(void*) {
  Nested();
  return 1;
}
void WriteInt(void*, int) { Nested(); }
void Changed(void*) { Nested(); }
float Loop(float, float, int, void*) {
  Nested();
  return static_cast<float>(Byte() % 5 - 2);
}
int Enable() {
  Nested();
  return Byte() % 4 != 3;
}
void Disable() { Nested(); }
void Stop() { Nested(); }
void Receive(VYRAPluginID, int, void*) { Nested(); }

void AddPlugin() {
  if (VYRACountPlugins() >= kMostPlugins) return;
  PluginRecord& record = VYRARegistryAppend({});
  record.moduleHandle = dlopen(nullptr, RTLD_NOW);
  record.enable = Enable;
  record.disable = Disable;
  record.stop = Stop;
  record.receiveMessage = Receive;
  record.error = [](const char* message) { Require(message != nullptr); };
}

VYRAPluginID AnyPlugin() { return Byte() % (kMostPlugins / 4) - 1; }

void AccessShared() {
  const std::size_t which = static_cast<std::size_t>(Byte()) % kTypes.size();
  const std::string name = "fuzz/shared/" + std::to_string(which);
  const VYRADataRef item = VYRAFindDataRef(name.c_str());
  unsigned char values[8 * 16] = {};
  const int offset = Byte() % 20 - 2;
  const int count = Byte() % 18 - 1;
  const int choice = Byte() % 5;
  if (choice == 0) VYRAShareData(name.c_str(), kTypes[which], Changed, nullptr);
  if (choice == 1) VYRAUnshareData(name.c_str(), kTypes[which], Changed, nullptr);
  if (choice == 2) {
    VYRASetDatai(item, count);
    VYRASetDatab(item, values, offset, count);
  }
  if (choice == 3) VYRASetDatavf(item, reinterpret_cast<float*>(values), offset, count);
  if (choice == 4) {
    VYRAGetDatab(item, values, offset, count);
    VYRAGetDatavi(item, reinterpret_cast<int*>(values), offset, count);
  }
}

void AccessDataRef() {
  const std::size_t which = static_cast<std::size_t>(Byte()) % kNames.size();
  VYRADataRef& handle = gHandles[which];
  const int choice = Byte() % 5;
  if (choice == 0)
    handle = VYRARegisterDataAccessor(kNames[which], VYRA_TYPE_INT, 1, ReadInt, WriteInt, nullptr, nullptr,
                                      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                      nullptr, nullptr);
  if (choice == 1) VYRAUnregisterDataAccessor(handle);
  if (choice == 2) VYRASetDatai(handle, 1);
  if (choice == 3) Require(VYRAFindDataRef(kNames[which]) == nullptr || VYRAIsDataRefGood(handle) == 1);
  if (choice == 4) VYRAGetDatai(handle);
}

void UseFlightLoops() {
  VYRAFlightLoopID& loop = gLoops[static_cast<std::size_t>(Byte()) % gLoops.size()];
  const VYRAFlightLoopParams params = {sizeof(params), Byte() % 2, Loop, &loop};
  const float interval = static_cast<float>(Byte() % 5 - 2);
  const int choice = Byte() % 5;
  if (choice == 0) loop = VYRACreateFlightLoop(&params);
  if (choice == 1) VYRADestroyFlightLoop(loop);
  if (choice == 2) VYRAScheduleFlightLoop(loop, interval, 1);
  if (choice == 3) VYRAUnregisterFlightLoopCallback(Loop, &loop);
  if (choice == 4) VYRARegisterFlightLoopCallback(Loop, interval, &loop);
}

int Draw(int, int, void*) {
  Nested();
  return Byte();
}
int Sniff(char, int, char, void*) {
  Nested();
  return Byte() % 4 != 3;
}
void Fire(void*) { Nested(); }
void DrawWindow(VYRAWindowID, void*) { Nested(); }
void HandleKey(VYRAWindowID, char, int, char, void*, int) { Nested(); }
int HandleMouse(VYRAWindowID, int, int, int, void*) {
  Nested();
  return Byte() % 2;
}
int HandleCursor(VYRAWindowID, int, int, void*) {
  Nested();
  return Byte() % 2;
}

template <class Handles>
auto& AnyOf(Handles& handles) {
  return handles[static_cast<std::size_t>(Byte()) % handles.size()];
}

void UseWindows() {
  VYRAWindowID& window = AnyOf(gWindowHandles);
  VYRAWindowCreateParams params = {sizeof(params), 0,           10,        10,           0,       Byte() % 2,
                                   DrawWindow,     HandleMouse, HandleKey, HandleCursor, nullptr, nullptr};
  const int choice = Byte() % 7;
  if (choice == 0 || choice == 1) window = VYRACreateWindowEx(&params);
  if (choice == 2) VYRADestroyWindow(window);
  if (choice == 3) VYRATakeKeyboardFocus(window);
  if (choice == 4) VYRABringWindowToFront(window);
  if (choice == 5) VYRASetWindowIsVisible(window, Byte() % 2);
  if (choice == 6) {
    Require(VYRAGetWindowRefCon(window) == nullptr);
    VYRAIsWindowInFront(window);
  }
}

void RegisterForDisplay() {
  void* const refcon = &AnyOf(gHotKeyHandles);
  VYRAHotKeyID& hotKey = AnyOf(gHotKeyHandles);
  const int choice = Byte() % 7;
  if (choice == 0) VYRARegisterDrawCallback(Draw, 50, Byte() % 2, refcon);
  if (choice == 1) VYRAUnregisterDrawCallback(Draw, 50, Byte() % 2, refcon);
  if (choice == 2) VYRARegisterKeySniffer(Sniff, Byte() % 2, refcon);
  if (choice == 3) VYRAUnregisterKeySniffer(Sniff, Byte() % 2, refcon);
  if (choice == 4) hotKey = VYRARegisterHotKey('K', Byte() % 2, "fuzz", Fire, nullptr);
  if (choice == 5) VYRAUnregisterHotKey(hotKey);
  if (choice == 6) VYRASetHotKeyCombination(VYRAGetNthHotKey(Byte() % 4), 'K', Byte() % 2);
}

// The host's own calls, which may come from inside a plugin's.
void CallHooks() {
  if (gDepth >= kDeepest) return;
  ++gDepth;
  const int choice = Byte() % 7;
  if (choice == 0) VYRADisplayDoDrawingHook(20, Byte() % 2);
  if (choice == 1) VYRADisplayDoDrawingHook(19, 0);
  if (choice == 2) VYRADisplayKeyPressHook('k', Byte() % 2, 'K');
  if (choice == 3) VYRADisplayMouseClickHook(Byte() % 12, 5, VYRA_MOUSE_DOWN);
  if (choice == 4) VYRADisplayMouseClickHook(Byte() % 12, 5, VYRA_MOUSE_UP);
  if (choice == 5) VYRADisplayCursorHook(Byte() % 12, 5);
  if (choice == 6) VYRAProcessingRunPass(static_cast<float>(Byte()), Byte() % 2);
  --gDepth;
}

void Act() {
  const int choice = Byte() % 12;
  if (choice == 0) AddPlugin();
  if (choice == 1) VYRAEnablePlugin(AnyPlugin());
  if (choice == 2) VYRADisablePlugin(AnyPlugin());
  if (choice == 3) UnloadOnePlugin(AnyPlugin());
  if (choice == 4) VYRASendMessageToPlugin(AnyPlugin(), 1, nullptr);
  if (choice == 5) CallHooks();
  if (choice == 6) AccessShared();
  if (choice == 7) AccessDataRef();
  if (choice == 8) UseFlightLoops();
  if (choice == 9) UseWindows();
  if (choice == 10) RegisterForDisplay();
  if (choice == 11) {
    const StDispatchCallback dispatch(AnyPlugin(), VYRA_CALL_MESSAGE);
    Nested();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  gBytes = data;
  gLeft = size;
  gHooks = &gHost.services;
  gHost.calls.clear();
  gHost.log.clear();
  VYRARegistryAppend({});
  VYRARegistrySetEnabled(VYRA_HOST_PLUGIN, true);
  while (gLeft > 0) Act();
  VYRADisableAllPlugins();
  VYRAUnloadPlugins();
  Require(gDepth == 0 && VYRAGetMyID() == VYRA_HOST_PLUGIN && gFlightLoops.IterationDepth() == 0);
  // What the host itself registered outlives the plugins; the next run starts without any of it.
  for (const VYRAPluginID plugin : {VYRA_HOST_PLUGIN, VYRA_NO_PLUGIN}) VYRALoaderRunCleanupHooks(plugin);
  return 0;
}
