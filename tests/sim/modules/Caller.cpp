// A plugin without fault that leads into the faulty one, in each pass: by a dataref of its, and by calling a
// function in its module.
#include <dlfcn.h>

#include <cstring>

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

namespace {

void CallFaultyDirectly() {
  char path[VYRA_PLUGIN_INFO_SIZE] = "";
  VYRAGetPluginInfo(VYRAFindPluginBySignature("org.skyvora.test.faulty"), nullptr, path, nullptr, nullptr);
  void* const module = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
  if (module == nullptr) return;
  if (void* const help = dlsym(module, "FaultyHelp")) reinterpret_cast<void (*)()>(help)();
  dlclose(module);
}

float FlightLoop(float /*elapsedSinceLastCall*/, float /*elapsedTime*/, int /*counter*/, void* /*refcon*/) {
  if (VYRADataRef value = VYRAFindDataRef("faulty/value")) VYRAGetDatai(value);
  CallFaultyDirectly();
  return -1.0F;
}

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "Caller");
  std::strcpy(outSignature, "org.skyvora.test.caller");
  std::strcpy(outDescription, "Leads into the faulty plugin.");
  VYRARegisterFlightLoopCallback(FlightLoop, 5.0F / 60.0F, nullptr);
  return 1;
}

VYRA_PLUGIN_EXPORT void VyPluginStop() {}
