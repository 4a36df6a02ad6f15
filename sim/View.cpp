// Drawing and camera, step by step.
#include "View.h"

#include <cmath>
#include <numbers>

#include "Canvas.h"
#include "Terrain.h"
#include "World.h"

namespace sim {
namespace {

constexpr int kLastDrawingStep = 26;
constexpr int kWindowStep = 20;
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
  if (pluginHasCamera) ++gWorld.activity.cameraFrames;
  if (pluginHasCamera == gPluginHasCamera) return;
  if (pluginHasCamera) ++gWorld.activity.cameraTakings;
  gPluginHasCamera = pluginHasCamera;
  gWorld.news.emplace_back(pluginHasCamera ? "camera: a plugin sets it" : "camera: the simulator's again");
}

}  // namespace

void FillViewServices(VYRAHostServices& services) {
  services.GetMouseLocation = [](int* outX, int* outY, int /*flag*/) {
    if (outX != nullptr) *outX = gWorld.mouseX;
    if (outY != nullptr) *outY = gWorld.mouseY;
  };
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

void DrawFrame() {
  ClearCanvas();
  for (int step = 1; step <= kLastDrawingStep; ++step) {
    VYRADoDrawingHook(step, 0);
    // Here and nowhere later, before anything else calls plugins: the step has walked the windows from the
    // back, and until they are walked from the front a new window would hide all but the back-most one.
    if (step == kWindowStep) VYRACursorHook(gWorld.mouseX, gWorld.mouseY);
  }
}

void AskCamera() {
  VYRACameraPosition camera = ChaseCamera();
  const int answer = VYRACameraHook(&camera.x, &camera.y, &camera.z, &camera.pitch, &camera.heading,
                                    &camera.roll, &camera.zoom);
  gCamera = camera;
  NoteTaking(answer != 1);
}

bool PluginHasCamera() { return gPluginHasCamera; }

const VYRACameraPosition& Camera() { return gCamera; }

}  // namespace sim
