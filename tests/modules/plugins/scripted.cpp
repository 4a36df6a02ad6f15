// A plugin that does at each call what the test tells it to, and otherwise behaves well.
#include <cstdio>
#include <cstring>
#include <exception>

#include "../Moment.h"

namespace {

char gName[64];

class Failure : public std::exception {
 public:
  const char* what() const noexcept override { return gName; }
};

[[noreturn]] void Fail() { throw Failure(); }

float FlightLoop(float, float, int, void*);
int ReadInt(void*);
void Changed(void*);

int Report(const char* call, int result, Moment moment = {}) {
  moment.plugin = gName;
  moment.call = call;
  moment.result = result;
  moment.flightLoop = FlightLoop;
  moment.readInt = ReadInt;
  moment.changed = Changed;
  moment.fail = Fail;
  VYRASendMessageToPlugin(VYRA_HOST_PLUGIN, kMomentMessage, &moment);
  if (moment.act != nullptr) moment.act(moment);
  return moment.result;
}

float FlightLoop(float, float, int, void*) { return static_cast<float>(Report("loop", -1)); }
int ReadInt(void*) { return Report("read", 7); }
void Changed(void*) { Report("changed", 0); }

// Until a plugin has named itself, the library calls it after its place below the plugins folder.
void TakeNameFromPlace() {
  char place[VYRA_PLUGIN_INFO_SIZE] = "";
  VYRAGetPluginInfo(VYRAGetMyID(), place, nullptr, nullptr, nullptr);
  std::snprintf(gName, sizeof(gName), "%.*s", static_cast<int>(std::strcspn(place, "/.")), place);
}

#ifdef WITH_GLOBAL_OBJECT
class GlobalObject {
 public:
  GlobalObject() {
    TakeNameFromPlace();
    Report("construct", 0);
  }
  ~GlobalObject() { Report("destroy", 0); }
} gGlobalObject;
#endif

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  TakeNameFromPlace();
  std::snprintf(outName, VYRA_PLUGIN_INFO_SIZE, "%s", gName);
  std::snprintf(outSignature, VYRA_PLUGIN_INFO_SIZE, "test.%s", gName);
  std::snprintf(outDescription, VYRA_PLUGIN_INFO_SIZE, "Plugin %s of a test", gName);
  return Report("start", 1,
                {.outName = outName, .outSignature = outSignature, .outDescription = outDescription});
}

VYRA_PLUGIN_EXPORT void VyPluginStop(void) { Report("stop", 0); }
VYRA_PLUGIN_EXPORT int VyPluginEnable(void) { return Report("enable", 1); }
VYRA_PLUGIN_EXPORT void VyPluginDisable(void) { Report("disable", 0); }

VYRA_PLUGIN_EXPORT void VyPluginReceiveMessage(VYRAPluginID from, int message, void* param) {
  Report("message", 0, {.from = from, .message = message, .param = param});
}
