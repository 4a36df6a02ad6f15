// The services that show this simulator as it is: time, paths, versions, the screen, plane 0, the log.
#include "HostServices.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "Log.h"
#include "NeutralServices.h"
#include "World.h"

namespace sim {
namespace {

constexpr int kTableRevision = 4;  // with ShowMessage and ShowLoadingStatus
constexpr int kHostVersion = 600;
constexpr int kHostId = 1;
constexpr int kLanguageEnglish = 0;
constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 800;
constexpr int kServiceCount = 70;

// The callers' buffers are large enough: the simulator refuses longer paths before it starts.
void CopyTo(char* buffer, std::string_view text) { buffer[text.copy(buffer, text.size())] = '\0'; }

void GetNthAircraftModel(int planeIndex, char* outPath, char* outFileName) {
  const std::string_view path = planeIndex == 0 ? std::string_view(gWorld.modelPath) : std::string_view();
  CopyTo(outPath, path);
  CopyTo(outFileName, path.substr(path.rfind('/') + 1));
}

int CountAircraft(int* outTotal, int* outActive, int* outController) {
  if (outTotal != nullptr) *outTotal = 1;
  if (outActive != nullptr) *outActive = 1;
  if (outController != nullptr) *outController = VYRA_HOST_PLUGIN;
  return 1;
}

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

  services.GetElapsedTime = [] { return static_cast<float>(gWorld.elapsedSeconds); };
  services.DebugString = [](const char* text) { gWorld.log->Write(text); };
  services.GetSystemPath = [](char* outPath) { CopyTo(outPath, gWorld.systemPath); };
  services.GetPrefsPath = [](char* outPath) { CopyTo(outPath, gWorld.systemPath + "vyra-sim.prefs"); };
  services.GetNthAircraftModel = GetNthAircraftModel;
  services.CountAircraft = CountAircraft;
  services.GetVersions = [](int* outHostVersion, int* outHostId) {
    *outHostVersion = kHostVersion;
    *outHostId = kHostId;
  };
  services.GetLanguage = [] { return kLanguageEnglish; };
  services.ShowMessage = ShowMessage;
  services.ShowLoadingStatus = [](const char* text) { gWorld.log->Write(fmt::format("Status: {}\n", text)); };
  services.HostReceiveMessage = ReceiveMessage;
  services.GetScreenSize = [](int* outWidth, int* outHeight) {
    *outWidth = kScreenWidth;
    *outHeight = kScreenHeight;
  };
  services.GetMouseLocation = [](int* outX, int* outY, int /*flag*/) {
    *outX = kScreenWidth / 2;
    *outY = kScreenHeight / 2;
  };

  CheckEverySlot(services);
  return services;
}

}  // namespace sim
