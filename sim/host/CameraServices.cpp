// The simulator's own camera follows the user's aircraft.
#include "host/CameraServices.h"

#include <cmath>
#include <numbers>

#include "host/FlightBoard.h"
#include "report/Activity.h"
#include "report/News.h"
#include "world/Terrain.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr double kCameraDistance = 30.0;  // metres behind the aircraft
constexpr double kCameraHeight = 8.0;     // and above it

VYRACameraPosition gCamera{.x = 0, .y = 0, .z = 0, .pitch = 0, .heading = 0, .roll = 0, .zoom = 1};
bool gPluginHasCamera = false;

VYRACameraPosition ChaseCamera() {
  const AircraftMotion& aircraft = gWorld.aircraft;
  const LocalPoint place = ToLocal(
      {aircraft.latitudeDegrees, aircraft.longitudeDegrees, static_cast<double>(aircraft.altitudeMetres)});
  const double track = static_cast<double>(aircraft.headingDegrees) * std::numbers::pi / 180.0;
  return {.x = static_cast<float>(place.x - kCameraDistance * std::sin(track)),
          .y = static_cast<float>(place.y + kCameraHeight),
          .z = static_cast<float>(place.z + kCameraDistance * std::cos(track)),
          .pitch = 0.0F,
          .heading = aircraft.headingDegrees,
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

bool PluginHasCamera() { return gPluginHasCamera; }

const VYRACameraPosition& Camera() { return gCamera; }

}  // namespace sim
