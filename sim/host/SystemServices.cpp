// What plugins say goes to the log.
#include "host/SystemServices.h"

#include <fmt/core.h>

#include <string_view>
#include <vector>

#include "host/CostWatch.h"
#include "host/LoadWatch.h"
#include "host/ServiceTable.h"
#include "report/Log.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr int kHostId = 1;
constexpr int kLanguageEnglish = 0;

int gReloads = 0;

// The callers' buffers are large enough: the simulator refuses longer paths before it starts.
void CopyTo(char* buffer, std::string_view text) { buffer[text.copy(buffer, text.size())] = '\0'; }

// The library shows a message only when it reloads the plugins.
void ShowMessage(const char* line1, const char* line2, const char* line3, const char* line4) {
  std::vector<std::string> lines;
  for (const std::string_view line : {line1, line2, line3, line4})
    if (!line.empty()) lines.emplace_back(line);
  for (const std::string& line : lines) gLog->Write(fmt::format("Message: {}\n", line));
  if (gUserDisplay.showMessage) gUserDisplay.showMessage(lines);
  ++gReloads;
  BeginReload();
  MarkInTrace("all plugins reloaded");
}

void ShowStatus(const char* text) {
  gLog->Write(fmt::format("Status: {}\n", text));
  if (gUserDisplay.showStatus) gUserDisplay.showStatus(text);
}

void ReceiveMessage(VYRAPluginID fromPlugin, int message, void* /*param*/) {
  if (fromPlugin == VYRA_HOST_PLUGIN) return;  // the simulator's own broadcast comes back to it as well
  gLog->Write(fmt::format("Skyvora: message {} from plugin {}\n", message, fromPlugin));
}

}  // namespace

void FillSystemServices(VYRAHostServices& services) {
  services.GetElapsedTime = [] { return static_cast<float>(gWorld.elapsedSeconds); };
  services.DebugString = [](const char* text) {
    gLog->Write(text);
    FollowLog(text);
  };
  services.GetSystemPath = [](char* outPath) { CopyTo(outPath, gWorld.systemPath); };
  services.GetPrefsPath = [](char* outPath) { CopyTo(outPath, gWorld.systemPath + "vyra-sim.prefs"); };
  services.GetVersions = [](int* outHostVersion, int* outHostId) {
    *outHostVersion = kHostVersion;
    *outHostId = kHostId;
  };
  services.GetLanguage = [] { return kLanguageEnglish; };
  services.ShowMessage = ShowMessage;
  services.ShowLoadingStatus = ShowStatus;
  services.HostReceiveMessage = ReceiveMessage;
}

int CountReloads() { return gReloads; }

}  // namespace sim
