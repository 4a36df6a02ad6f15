// A plugin with one fault, which the environment chooses: VYRA_TEST_FAULT=WHAT@WHERE. WHAT is a row of
// kFaults, WHERE one of the places that call Visit.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>

#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAMenus.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

namespace {

// ---- Faults -------------------------------------------------------------------------------------------

// What the compiler must not see through.
volatile int gZero = 0;
int* volatile gNull = nullptr;
volatile bool gForever = true;

void WriteToNull() { *gNull = 1; }

int Recurse(int depth) {
  volatile char room[256];
  room[0] = static_cast<char>(depth);
  return gForever ? Recurse(depth + 1) + room[0] : 0;
}

void JumpToNowhere() {
  const volatile std::uintptr_t address = 0x123400;
  reinterpret_cast<void (*)()>(address)();
}

void UseLibraryWithBadPointer() { VYRAFindDataRef(reinterpret_cast<const char*>(gNull) + 8); }

void ThrowAndCatch() {
  try {
    throw 7;
  } catch (int) {
    gZero = 0;
  }
}

void SpinForever() {
  while (gForever) continue;
}

void ForkAnd(void (*act)()) {
  const pid_t child = fork();
  if (child == 0) {
    act();
    _exit(0);
  }
  waitpid(child, nullptr, 0);
}

struct Fault {
  const char* name;
  void (*happen)();
};
constexpr Fault kFaults[] = {
    {"null", WriteToNull},
    {"abort", std::abort},
    {"overflow", [] { gZero = Recurse(0); }},
    {"division", [] { gZero = 100 / gZero; }},
    {"endless", SpinForever},
    {"exception", [] { throw std::out_of_range("thrown on purpose"); }},
    {"number", [] { throw 7; }},
    {"catch", ThrowAndCatch},
    {"exit", [] { std::exit(0); }},
    {"quick_exit", [] { std::quick_exit(0); }},
    {"_exit", [] { _exit(0); }},
    {"exit-in-copy", [] { ForkAnd([] { std::exit(5); }); }},
    {"kill", [] { raise(SIGKILL); }},
    {"signal-from-outside", [] { ForkAnd([] { kill(getppid(), SIGSEGV); }); }},
    {"ask-for-end", [] { kill(getppid(), SIGTERM); }},
    {"jump", JumpToNowhere},
    {"bad-pointer", UseLibraryWithBadPointer},
    {"thread-left",
     [] {
       std::thread([] {
         while (gForever) usleep(1000);
       }).detach();
     }},
    {"null-in-thread", [] { std::thread(WriteToNull).join(); }},
};

void Visit(const char* place) {
  const char* const chosen = std::getenv("VYRA_TEST_FAULT");
  if (chosen == nullptr) return;
  for (const Fault& fault : kFaults) {
    if (std::string(fault.name) + "@" + place != chosen) continue;
    VYRADebugString("half a line");
    fault.happen();
  }
}

// ---- Places -------------------------------------------------------------------------------------------

[[gnu::constructor]] void Construct() { Visit("constructor"); }
[[gnu::destructor]] void Destruct() { Visit("destructor"); }

float FlightLoop(float /*elapsedSinceLastCall*/, float /*elapsedTime*/, int /*counter*/, void* /*refcon*/) {
  Visit("loop");
  return -1.0F;
}

int DrawPhase(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
  Visit("draw");
  return 1;
}

void Register() {
  VYRARegisterFlightLoopCallback(FlightLoop, 5.0F / 60.0F, nullptr);
  VYRARegisterDrawCallback(DrawPhase, 5, 0, nullptr);
  VYRAWindowCreateParams window = {};
  window.structSize = sizeof(window);
  window.left = 100;
  window.top = 200;
  window.right = 200;
  window.bottom = 100;
  window.visible = 1;
  window.draw = [](VYRAWindowID, void*) { Visit("window"); };
  VYRACreateWindowEx(&window);
  const VYRAMenuID plugins = VYRAFindPluginsMenu();
  const VYRAMenuID menu = VYRACreateMenu(
      "Faulty", plugins, VYRAAppendMenuItem(plugins, "Faulty", nullptr, 0),
      [](void*, void*) { Visit("menu"); }, nullptr);
  VYRAAppendMenuItem(menu, "Fail", nullptr, 0);
  VYRARegisterDataAccessor(
      "faulty/value", VYRA_TYPE_INT, 0,
      [](void*) {
        Visit("accessor");
        return 1;
      },
      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
      nullptr, nullptr);
}

}  // namespace

// For a plugin that calls this one without the library.
VYRA_PLUGIN_EXPORT void FaultyHelp() { Visit("help"); }

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "Faulty");
  std::strcpy(outSignature, "org.skyvora.test.faulty");
  std::strcpy(outDescription, "Has one fault.");
  Visit("start");
  Register();
  return 1;
}

VYRA_PLUGIN_EXPORT int VyPluginEnable() {
  Visit("enable");
  return 1;
}
VYRA_PLUGIN_EXPORT void VyPluginDisable() { Visit("disable"); }
VYRA_PLUGIN_EXPORT void VyPluginStop() { Visit("stop"); }
VYRA_PLUGIN_EXPORT void VyPluginReceiveMessage(VYRAPluginID /*from*/, int message, void* /*param*/) {
  if (message == 1000) Visit("message");
}
