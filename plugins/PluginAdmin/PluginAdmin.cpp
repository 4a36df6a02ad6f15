// PluginAdmin: writes the list of plugins to the log, and has a window in which a person enables, disables
// and reloads them and rebinds their hot keys. The library loads and enables it first, so its list at that
// moment shows the others loaded but not yet enabled; the list in its first flight loop shows them as they
// fly. A reload starts it afresh, and so both lists appear again.
#include <cstring>
#include <string>

#include "AdminWindow.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

namespace {

VYRAFlightLoopID gFirstPass = nullptr;

void OnError(const char* message) {
  VYRADebugString((std::string("[PluginAdmin]: ") + message + "\n").c_str());
}

void LogPlugins(const char* occasion) {
  const int count = VYRACountPlugins();
  std::string text = "PluginAdmin: " + std::to_string(count) + " plugins " + occasion + "\n";
  for (int index = 0; index < count; ++index) {
    const VYRAPluginID plugin = VYRAGetNthPlugin(index);
    char name[VYRA_PLUGIN_INFO_SIZE] = "";
    char signature[VYRA_PLUGIN_INFO_SIZE] = "";
    VYRAGetPluginInfo(plugin, name, nullptr, signature, nullptr);
    const char* const state = VYRAIsPluginEnabled(plugin) != 0 ? "enabled" : "disabled";
    text += "PluginAdmin:   " + std::to_string(plugin) + " " + name + " (" + signature + ") " + state + "\n";
  }
  VYRADebugString(text.c_str());
}

float LogOnce(float /*elapsedSinceLastCall*/, float /*elapsedTime*/, int /*counter*/, void* /*refcon*/) {
  LogPlugins("at the first pass");
  return 0.0F;  // not again
}

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "PluginAdmin");
  std::strcpy(outSignature, "org.skyvora.plugin-admin");
  std::strcpy(outDescription, "Lists the plugins, and switches them on and off.");
  VYRASetErrorCallback(OnError);
  VYRAFlightLoopParams params{};
  params.structSize = sizeof(params);
  params.phase = VYRA_FLIGHT_LOOP_PHASE_0;
  params.callback = LogOnce;
  gFirstPass = VYRACreateFlightLoop(&params);
  MakeAdminWindow();
  return 1;
}

VYRA_PLUGIN_EXPORT int VyPluginEnable() {
  LogPlugins("when enabled");
  VYRAScheduleFlightLoop(gFirstPass, -1.0F, 1);
  return 1;
}
