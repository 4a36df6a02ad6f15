// The simulator's own camera follows the user's aircraft.
#include "host/CameraServices.h"

#include <algorithm>
#include <cmath>

#include "host/FlightBoard.h"
#include "report/Activity.h"
#include "report/News.h"
#include "world/Angles.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr double kNearest = 5.0;  // metres
constexpr double kFarthest = 2'000.0;
constexpr double kHeightPerDistance = 0.27;
constexpr double kPitch = -8.0;    // degrees: the aircraft stands below the middle, and the horizon above it
constexpr double kLowest = -20.0;  // degrees below where the camera is at first
constexpr double kHighest = 70.0;

double gDistance = 30.0;    // metres behind the aircraft
double gTurnedRight = 0.0;  // degrees
double gTurnedUp = 0.0;
VYRACameraPosition gCamera{.x = 0, .y = 0, .z = 0, .pitch = 0, .heading = 0, .roll = 0, .zoom = 1};
bool gPluginHasCamera = false;

VYRACameraPosition ChaseCamera() {
  const world::Vector place = gWorld.localFrame.ToLocal(gWorld.aircraft.motion.place);
  const double heading = gWorld.aircraft.Angles().heading + gTurnedRight;
  const double track = world::ToRadians(heading);
  // On a circle through where it is at first.
  const double higher = world::ToRadians(gTurnedUp);
  const double behind = gDistance * (std::cos(higher) - kHeightPerDistance * std::sin(higher));
  const double above = gDistance * (std::sin(higher) + kHeightPerDistance * std::cos(higher));
  return {.x = static_cast<float>(place.x - behind * std::sin(track)),
          .y = static_cast<float>(place.y + above),
          .z = static_cast<float>(place.z + behind * std::cos(track)),
          .pitch = static_cast<float>(kPitch - gTurnedUp),
          .heading = static_cast<float>(heading),
          .roll = 0.0F,
          .zoom = 1.0F};
}

void NoteTaking(bool pluginHasCamera) {
  if (pluginHasCamera) ++gActivity.cameraFrames;
  if (pluginHasCamera == gPluginHasCamera) return;
  if (pluginHasCamera) ++gActivity.cameraTakings;
  gPluginHasCamera = pluginHasCamera;
  gNews.emplace_back(pluginHasCamera ? "camera: a plugin sets it" : "camera: the simulator's again");
}

}  // namespace

void FillCameraServices(VYRAHostServices& services) {
  services.ReadCameraPosition = [](float* outX, float* outY, float* outZ, float* outPitch, float* outHeading,
                                   float* outRoll, float* outZoom) {
    *outX = gCamera.x;
    *outY = gCamera.y;
    *outZ = gCamera.z;
    *outPitch = gCamera.pitch;
    *outHeading = gCamera.heading;
    *outRoll = gCamera.roll;
    *outZoom = gCamera.zoom;
  };
}

void AskCamera() {
  VYRACameraPosition camera = ChaseCamera();
  const int answer = CallHook("VYRACameraHook", VYRACameraHook, &camera.x, &camera.y, &camera.z,
                              &camera.pitch, &camera.heading, &camera.roll, &camera.zoom);
  gCamera = camera;
  NoteTaking(answer != 1);
}

void MoveChaseCamera(double factor) { gDistance = std::clamp(gDistance * factor, kNearest, kFarthest); }

void TurnChaseCamera(double right, double higher) {
  gTurnedRight = std::remainder(gTurnedRight + right, 360.0);
  gTurnedUp = std::clamp(gTurnedUp + higher, kLowest, kHighest);
}

void TurnChaseCameraBack() { gTurnedRight = gTurnedUp = 0.0; }

bool PluginHasCamera() { return gPluginHasCamera; }

const VYRACameraPosition& Camera() { return gCamera; }

}  // namespace sim
