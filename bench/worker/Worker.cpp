// The plugin that vyra-bench hosts, in as many copies as it needs. A copy does nothing until it is told to.
#include "Worker.h"

#include <VYRADataAccess.h>
#include <VYRADisplay.h>
#include <VYRAPlugin.h>
#include <VYRAProcessing.h>

#include <array>
#include <cstdio>
#include <cstring>

namespace {

using bench::WorkerFrame;
using bench::WorkerJob;

constexpr int kValues = 10;
constexpr int kReadsPerLoop = bench::kWorkerReads / bench::kWorkerFlightLoops;
constexpr int kWritesPerLoop = bench::kWorkerWrites / bench::kWorkerFlightLoops;

std::array<float, kValues> gValues;
std::array<VYRADataRef, kValues> gNeighborsValues;
WorkerFrame gFrame;

using Name = std::array<char, 64>;

Name ValueName(int worker, int value) {
  Name name{};
  std::snprintf(name.data(), name.size(), "bench/worker_%d/value_%d", worker, value);
  return name;
}

float ReadValue(void* refcon) { return *static_cast<float*>(refcon); }
void WriteValue(void* refcon, float value) { *static_cast<float*>(refcon) = value; }

void Publish(int index) {
  for (int i = 0; i < kValues; ++i) {
    float* value = &gValues[static_cast<std::size_t>(i)];
    VYRARegisterDataAccessor(ValueName(index, i).data(), VYRA_TYPE_FLOAT, 1, nullptr, nullptr, ReadValue,
                             WriteValue, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                             nullptr, value, value);
  }
}

// The refcon is which of the worker's flight loops this is; each writes two values of its own.
float Work(float /*sinceLastCall*/, float /*now*/, int counter, void* refcon) {
  float sum = 0;
  for (int i = 0; i < kReadsPerLoop; ++i) {
    sum += VYRAGetDataf(gNeighborsValues[static_cast<std::size_t>(i % kValues)]);
  }
  const std::size_t first = static_cast<std::size_t>(kWritesPerLoop) * reinterpret_cast<std::size_t>(refcon);
  for (std::size_t i = 0; i < kWritesPerLoop; ++i) {
    VYRASetDataf(gNeighborsValues[first + i], sum * 0.01F + static_cast<float>(counter));
  }
  ++gFrame.tally->flightLoops;
  return -1.0F;
}

int Draw(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
  ++gFrame.tally->drawCallbacks;
  return 1;
}

void DrawWindow(VYRAWindowID /*window*/, void* /*refcon*/) { ++gFrame.tally->windows; }

int HandleCommand(VYRACommandRef /*command*/, int /*phase*/, void* /*refcon*/) {
  ++gFrame.tally->commands;
  return 1;
}

void JoinFrame(const WorkerFrame& frame) {
  gFrame = frame;
  for (int i = 0; i < kValues; ++i) {
    VYRADataRef& value = gNeighborsValues[static_cast<std::size_t>(i)];
    value = VYRAFindDataRef(ValueName(frame.neighbor, i).data());
    if (value == nullptr) return;  // and is missed in the tally, as reads of nothing cost nothing
  }
  for (std::size_t i = 0; i < bench::kWorkerFlightLoops; ++i) {
    VYRARegisterFlightLoopCallback(Work, -1.0F, reinterpret_cast<void*>(i));
  }
  VYRARegisterDrawCallback(Draw, 50, 0, nullptr);
  VYRARegisterDrawCallback(Draw, 25, 1, nullptr);
  const int left = 10 * frame.index;
  VYRACreateWindow(left, 200, left + 100, 100, 1, DrawWindow, nullptr, nullptr, nullptr);
  VYRARegisterCommandHandler(frame.command, HandleCommand, 1, nullptr);
}

}  // namespace

// A copy is told from the others by its path.
VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::array<char, VYRA_PLUGIN_INFO_SIZE> path{};
  VYRAGetPluginInfo(VYRAGetMyID(), nullptr, path.data(), nullptr, nullptr);
  std::strcpy(outName, "Worker");
  std::strcpy(outSignature, path.data());
  std::strcpy(outDescription, "Does what vyra-bench tells it to.");
  return 1;
}

VYRA_PLUGIN_EXPORT void VyPluginStop(void) {}

VYRA_PLUGIN_EXPORT int VyPluginEnable(void) { return 1; }

VYRA_PLUGIN_EXPORT void VyPluginDisable(void) {}

VYRA_PLUGIN_EXPORT void VyPluginReceiveMessage(VYRAPluginID /*fromPlugin*/, int message, void* param) {
  if (message == bench::kMessageRunJob) {
    const auto& job = *static_cast<WorkerJob*>(param);
    job.run(job.context);
  } else if (message == bench::kMessagePublish) {
    Publish(static_cast<WorkerFrame*>(param)->index);
  } else if (message == bench::kMessageJoinFrame) {
    JoinFrame(*static_cast<WorkerFrame*>(param));
  }
}
