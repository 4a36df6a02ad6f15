#include "host/Frame.h"

#include <chrono>

#include "VYRAHost.h"
#include "host/CameraServices.h"
#include "host/CommandServices.h"
#include "host/ObjectServices.h"
#include "host/PlaneServices.h"
#include "host/ScreenServices.h"
#include "world/World.h"

namespace sim {
namespace {

float RunPass(int event) {
  const auto start = std::chrono::steady_clock::now();
  VYRAEventHook(event, nullptr, nullptr, static_cast<float>(gWorld.elapsedSeconds), 0.0F);
  const std::chrono::duration<float, std::micro> duration = std::chrono::steady_clock::now() - start;
  return duration.count();
}

}  // namespace

void FlyFrame(int frame, double rate, std::vector<float>& passMicroseconds) {
  gWorld.frame = frame;
  gWorld.elapsedSeconds = frame / rate;
  gWorld.aircraft.Advance(1.0 / rate);
  FinishLoads();
  passMicroseconds.push_back(RunPass(VYRA_EVENT_FLIGHT_LOOPS_0));
  ContinueHeldCommands();
  VYRAEventHook(VYRA_EVENT_COMMAND_REPEAT, nullptr, nullptr, 0.0F, 0.0F);
  AskCamera();
  DrawFrame();
  passMicroseconds.push_back(RunPass(VYRA_EVENT_FLIGHT_LOOPS_1));
  WatchAiPlanes();
}

}  // namespace sim
