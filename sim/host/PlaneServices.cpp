// Whenever the planes change hands, the simulator asks the library how many of them to run, and for a
// plugin's wish in place of each model.
#include "host/PlaneServices.h"

#include <fmt/format.h>

#include <array>
#include <filesystem>

#include "VYRAPlanes.h"
#include "host/FlightBoard.h"
#include "host/OwnDataRefs.h"
#include "host/PluginList.h"
#include "report/Activity.h"
#include "report/News.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr int kPlaneCount = 4;  // with the user's
constexpr const char* kOwnModel = "Aircraft/Default/Default.acf";

struct AiPlane {
  std::string modelPath;
  int isAiOff = 0;  // a plugin moves it
};

std::array<AiPlane, kPlaneCount> gPlanes;  // the first is not used: plane 0 is the world's aircraft
VYRAPluginID gOwner = VYRA_NO_PLUGIN;

std::string_view ModelPath(int plane) {
  if (plane == 0) return gWorld.modelPath;
  if (plane < 0 || plane >= kPlaneCount) return {};
  return gPlanes[static_cast<std::size_t>(plane)].modelPath;
}

// A plugin's path may be longer than the buffers of 256 bytes.
void CopyTo(char* buffer, std::string_view text) {
  buffer[text.copy(buffer, VYRA_PLUGIN_INFO_SIZE - 1)] = '\0';
}

// Plane 0 is left alone: its model changes with a step of the flight file, and plugins are told then.
void SetAircraftModel(int plane, const char* path, const char* /*fileName*/) {
  if (plane < 1 || plane >= kPlaneCount || path == nullptr) return;
  gPlanes[static_cast<std::size_t>(plane)].modelPath = path;
}

int CountAircraft(int* outTotal, int* outActive, int* outController) {
  if (outTotal != nullptr) *outTotal = kPlaneCount;
  if (outActive != nullptr) *outActive = kPlaneCount;
  if (outController != nullptr) *outController = gOwner;
  return kPlaneCount;
}

void LoadModel(int plane) {
  std::array<char, VYRA_PLANE_PATH_SIZE> path{};
  const std::string ownModel = gWorld.systemPath + kOwnModel;
  ownModel.copy(path.data(), path.size() - 1);
  VYRAUpdatePlaneNameAndPath(plane, nullptr, path.data());
  gPlanes[static_cast<std::size_t>(plane)].modelPath = path.data();
}

}  // namespace

void FillPlaneServices(VYRAHostServices& services) {
  services.GetNthAircraftModel = [](int plane, char* outPath, char* outFileName) {
    const std::string_view path = ModelPath(plane);
    CopyTo(outPath, path);
    CopyTo(outFileName, path.substr(path.rfind('/') + 1));
  };
  services.SetAircraftModel = SetAircraftModel;
  services.CountAircraft = CountAircraft;
}

void PublishPlaneSwitches() {
  for (std::size_t plane = 1; plane < gPlanes.size(); ++plane)
    PublishSwitch(fmt::format("sim/private/net_disables/ai_loc[{}]", plane).c_str(), gPlanes[plane].isAiOff);
}

void StartAiPlanes() {
  CallHook("VYRAGetNumberPlanesToHandle", VYRAGetNumberPlanesToHandle, kPlaneCount, 0);
  for (int plane = 1; plane < kPlaneCount; ++plane) LoadModel(plane);
}

void WatchAiPlanes() {
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  VYRACountAircraft(nullptr, nullptr, &owner);
  if (owner == gOwner) return;
  gOwner = owner;
  const int active = CallHook("VYRAGetNumberPlanesToHandle", VYRAGetNumberPlanesToHandle, kPlaneCount, 0);
  for (int plane = 1; plane < kPlaneCount; ++plane) LoadModel(plane);
  if (owner == VYRA_NO_PLUGIN) {
    ++gActivity.planesReturns;
    gNews.emplace_back("AI planes: the simulator's again");
  } else {
    ++gActivity.planesTakings;
    gNews.push_back(
        fmt::format("AI planes: taken by {}, which runs {} of {}", AiPlanesOwner(), active, kPlaneCount));
  }
}

std::string AiPlanesOwner() {
  if (gOwner == VYRA_NO_PLUGIN) return "";
  char signature[VYRA_PLUGIN_INFO_SIZE] = "";
  VYRAGetPluginInfo(gOwner, nullptr, nullptr, signature, nullptr);
  return signature;
}

}  // namespace sim
