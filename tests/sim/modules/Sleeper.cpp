// A plugin whose draw callback sleeps for 20 ms in frame 7, and whose dataref takes 30 ms to read.
#include <chrono>
#include <cstring>
#include <thread>

#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAPlugin.h"

namespace {

constexpr int kPhaseOfWindows = 50;

int Draw(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
  if (VYRAGetDatai(VYRAFindDataRef("sim/time/frame")) == 7)
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  return 1;
}

int ReadSlowly(void* /*refcon*/) {
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  return 42;
}

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "Sleeper");
  std::strcpy(outSignature, "org.skyvora.test.sleeper");
  std::strcpy(outDescription, "Sleeps when it draws and when it is read.");
  VYRARegisterDataAccessor("sleeper/value", VYRA_TYPE_INT, 0, ReadSlowly, nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  VYRARegisterDrawCallback(Draw, kPhaseOfWindows, 0, nullptr);
  return 1;
}
