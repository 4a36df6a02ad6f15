// The service table, put together from the subsystems, and the services that belong to none: time, paths,
// versions, the log.
#include "HostServices.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "AiPlanes.h"
#include "Canvas.h"
#include "Commands.h"
#include "Log.h"
#include "MenuBar.h"
#include "NeutralServices.h"
#include "Objects.h"
#include "Terrain.h"
#include "View.h"
#include "World.h"

namespace sim {
namespace {

constexpr int kTableRevision = 4;  // with ShowMessage and ShowLoadingStatus
constexpr int kHostVersion = 600;
constexpr int kHostId = 1;
constexpr int kLanguageEnglish = 0;
constexpr int kServiceCount = 70;

// The callers' buffers are large enough: the simulator refuses longer paths before it starts.
void CopyTo(char* buffer, std::string_view text) { buffer[text.copy(buffer, text.size())] = '\0'; }

// The library shows a message only when it reloads the plugins. There is no user to wait for.
void ShowMessage(const char* line1, const char* line2, const char* line3, const char* line4) {
  ++gWorld.reloads;
  for (const std::string_view line : {line1, line2, line3, line4})
    if (!line.empty()) gWorld.log->Write(fmt::format("Message: {}\n", line));
}

void ReceiveMessage(VYRAPluginID fromPlugin, int message, void* /*param*/) {
  if (fromPlugin == VYRA_HOST_PLUGIN) return;  // the simulator's own broadcast comes back to it as well
  gWorld.log->Write(fmt::format("Skyvora: message {} from plugin {}\n", message, fromPlugin));
}

// The library calls a slot without looking whether it is filled, so one that was forgotten ends the program
// here and not in the middle of a flight.
void CheckEverySlot(const VYRAHostServices& services) {
  std::array<void*, kServiceCount> slots{};
  static_assert(sizeof(services) == 8 + sizeof(slots));
  std::memcpy(slots.data(), reinterpret_cast<const char*>(&services) + 8, sizeof(slots));
  const auto empty = std::ranges::find(slots, nullptr);
  if (empty != slots.end())
    throw std::logic_error(fmt::format("service {} is missing", empty - slots.begin() + 1));
}

}  // namespace

VYRAHostServices MakeHostServices() {
  VYRAHostServices services{};
  services.serviceTableRevision = kTableRevision;
  services.hostVersion = kHostVersion;
  FillNeutralServices(services);
  FillCanvasServices(services);
  FillViewServices(services);
  FillMenuServices(services);
  FillCommandServices(services);
  FillPlaneServices(services);
  FillTerrainServices(services);
  FillObjectServices(services);

  services.GetElapsedTime = [] { return static_cast<float>(gWorld.elapsedSeconds); };
  services.DebugString = [](const char* text) { gWorld.log->Write(text); };
  services.GetSystemPath = [](char* outPath) { CopyTo(outPath, gWorld.systemPath); };
  services.GetPrefsPath = [](char* outPath) { CopyTo(outPath, gWorld.systemPath + "vyra-sim.prefs"); };
  services.GetVersions = [](int* outHostVersion, int* outHostId) {
    *outHostVersion = kHostVersion;
    *outHostId = kHostId;
  };
  services.GetLanguage = [] { return kLanguageEnglish; };
  services.ShowMessage = ShowMessage;
  services.ShowLoadingStatus = [](const char* text) { gWorld.log->Write(fmt::format("Status: {}\n", text)); };
  services.HostReceiveMessage = ReceiveMessage;

  CheckEverySlot(services);
  return services;
}

}  // namespace sim
