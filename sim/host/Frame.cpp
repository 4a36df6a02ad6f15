#include "host/Frame.h"

#include "VYRAHost.h"
#include "host/CameraServices.h"
#include "host/CommandServices.h"
#include "host/FlightBoard.h"
#include "host/FrameDrawing.h"
#include "host/FrameParts.h"
#include "host/InputServices.h"
#include "host/ObjectServices.h"
#include "host/PlaneServices.h"
#include "report/Clock.h"
#include "world/World.h"

namespace sim {
namespace {

void RunPass(int event, Histogram& passes) {
  const Nanoseconds start = ReadClock();
  CallHook("VYRAEventHook", VYRAEventHook, event, nullptr, nullptr, static_cast<float>(gWorld.elapsedSeconds),
           0.0F);
  passes.Add(ReadClock() - start);
}

}  // namespace

void FlyFrame(int frame, double rate, Histogram& passes) {
  BeginPart(FramePart::World);
  gWorld.Advance(frame, frame / rate);
  FinishLoads();
  PressSimulatedKeys();
  BeginPart(FramePart::Pass0);
  RunPass(VYRA_EVENT_FLIGHT_LOOPS_0, passes);
  BeginPart(FramePart::Commands);
  ContinueHeldCommands();
  CallHook("VYRAEventHook", VYRAEventHook, VYRA_EVENT_COMMAND_REPEAT, nullptr, nullptr, 0.0F, 0.0F);
  AskCamera();
  DrawFrame();
  BeginPart(FramePart::Pass1);
  RunPass(VYRA_EVENT_FLIGHT_LOOPS_1, passes);
  BeginPart(FramePart::Checks);
  WatchAiPlanes();
}

}  // namespace sim
