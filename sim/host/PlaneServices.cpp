// Whenever the planes change hands, the simulator asks the library how many of them to run, and for a
// plugin's wish in place of each model.
#include "host/PlaneServices.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "VYRAPlanes.h"
#include "VYRAPlugin.h"
#include "host/FlightBoard.h"
#include "host/Packages.h"
#include "report/Activity.h"
#include "report/Log.h"
#include "report/News.h"
#include "view/DrawnScene.h"
#include "view/gl/FramePainter.h"
#include "world/World.h"
#include "world/files/TextFile.h"

namespace sim {
namespace {

constexpr int kPlaneCount = World::kAiPlanes + 1;  // with the user's
constexpr std::size_t kPathBuffer = 4096;  // the longest path that Linux opens; the library is not told
constexpr const char* kOwnModel = "Aircraft/Default/Default.acf";

VYRAPluginID gOwner = VYRA_NO_PLUGIN;

world::AiPlane& Ai(int plane) { return gWorld.aiPlanes[static_cast<std::size_t>(plane - 1)]; }

std::string_view ModelPath(int plane) {
  if (plane == 0) return gWorld.modelPath;
  if (plane < 0 || plane >= kPlaneCount) return {};
  return Ai(plane).modelPath;
}

// A plugin's path may be longer than the buffers of 256 bytes.
void CopyTo(char* buffer, std::string_view text) {
  buffer[text.copy(buffer, VYRA_PLUGIN_INFO_SIZE - 1)] = '\0';
}

// A damaged description is told of, and the plane stays what it was. The simulator's own default need not be
// there: an AI plane flies without one.
void LoadAiModel(int plane, const std::string& path) {
  try {
    if (path != gWorld.systemPath + kOwnModel || std::filesystem::exists(path))
      world::ParseAircraft(world::ReadTextFile(path), path);
    Ai(plane).modelPath = path;
  } catch (const world::FileError& error) {
    gLog->Write(fmt::format("Failed: {}\n", error.what()));
  }
}

// The user's aircraft comes with its own plugins, also when a plugin asks for it.
void SetAircraftModel(int plane, const char* path, const char* /*fileName*/) {
  if (plane < 0 || plane >= kPlaneCount || path == nullptr) return;
  if (plane != 0) return LoadAiModel(plane, path);
  gNews.push_back(LoadUserAircraft(path).text);
}

int CountAircraft(int* outTotal, int* outActive, int* outController) {
  if (outTotal != nullptr) *outTotal = kPlaneCount;
  if (outActive != nullptr) *outActive = gWorld.activePlanes;
  if (outController != nullptr) *outController = gOwner;
  return kPlaneCount;
}

void LoadAllAiModels() {
  for (int plane = 1; plane < kPlaneCount; ++plane) {
    std::array<char, kPathBuffer> path{};
    const std::string ownModel = gWorld.systemPath + kOwnModel;
    ownModel.copy(path.data(), path.size() - 1);
    CallHook("VYRAUpdatePlaneNameAndPath", VYRAUpdatePlaneNameAndPath, plane, nullptr, path.data());
    LoadAiModel(plane, path.data());
  }
}

int AskHowMany() {
  const int active = CallHook("VYRAGetNumberPlanesToHandle", VYRAGetNumberPlanesToHandle, kPlaneCount, 0);
  gWorld.activePlanes = std::clamp(active, 1, kPlaneCount);
  return active;
}

void DrawAircraft(int plane, float x, float y, float z, float pitch, float roll, float yaw, int full,
                  void* /*drawingState*/) {
  if (plane < 0 || plane >= kPlaneCount) return;
  gDrawnScene.planes.push_back(
      {.plane = plane,
       .position = {static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)},
       .angles = {.heading = static_cast<double>(yaw),
                  .pitch = static_cast<double>(pitch),
                  .roll = static_cast<double>(roll)},
       .isFull = full != 0,
       .isByPlugin = true});
  if (IsPainting()) gPainter->DrawPlane(gDrawnScene.planes.back(), gWorld);
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
  services.DrawAircraft = DrawAircraft;
}

void StartAiPlanes() {
  AskHowMany();
  LoadAllAiModels();
}

void WatchAiPlanes() {
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  VYRACountAircraft(nullptr, nullptr, &owner);
  if (owner == gOwner) return;
  gOwner = owner;
  const int active = AskHowMany();
  LoadAllAiModels();
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

void DrawOtherPlanes() {
  for (int plane = 0; plane < gWorld.activePlanes; ++plane) {
    if (CountPlaneDraws(plane) != 0) continue;
    const world::Place& place = plane == 0 ? gWorld.aircraft.motion.place : Ai(plane).place;
    gDrawnScene.planes.push_back({.plane = plane,
                                  .position = gWorld.localFrame.ToLocal(place),
                                  .angles = plane == 0 ? gWorld.aircraft.Angles() : Ai(plane).angles,
                                  .isFull = true,
                                  .isByPlugin = false});
  }
}

int CountPlaneDraws(int plane) {
  return static_cast<int>(std::ranges::count_if(
      gDrawnScene.planes, [=](const DrawnPlane& drawn) { return drawn.plane == plane && drawn.isByPlugin; }));
}

}  // namespace sim
