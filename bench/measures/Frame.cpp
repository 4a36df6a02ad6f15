// A whole frame, with workers that do in it what plugins do.
#include <VYRAPlugin.h>

#include "../HostedLibrary.h"
#include "../worker/Worker.h"
#include "Measures.h"

namespace bench {

namespace {

constexpr int kLastDrawingStep = 26;

void RunFrame(const std::vector<VYRACommandRef>& commands) {
  VYRAEventHook(VYRA_EVENT_FLIGHT_LOOPS_0, nullptr, nullptr, 1.0F, 0.0F);
  VYRAEventHook(VYRA_EVENT_FLIGHT_LOOPS_1, nullptr, nullptr, 1.0F, 0.0F);
  for (const VYRACommandRef command : commands) VYRACommandHook(command, 1, 0, 1);
  for (int step = 1; step <= kLastDrawingStep; ++step) VYRADoDrawingHook(step, 0);
  VYRACursorHook(500, 500);
}

// Whether every worker did its whole load in every frame.
bool IsComplete(const WorkerTally& tally, long frames, long workers) {
  const long turns = frames * workers;
  return tally.flightLoops == turns * kWorkerFlightLoops &&
         tally.drawCallbacks == turns * kWorkerDrawCallbacks && tally.windows == turns &&
         tally.commands == turns;
}

}  // namespace

void MeasureFrame(Session& session, std::size_t size) {
  const HostedLibrary library(size);
  std::vector<char> commandRecords(size);
  std::vector<VYRACommandRef> commands;
  commands.reserve(size);
  WorkerTally tally;
  for (char& record : commandRecords) commands.push_back(reinterpret_cast<VYRACommandRef>(&record));
  for (const int message : {kMessagePublish, kMessageJoinFrame}) {
    for (int i = 0; i < library.Count(); ++i) {
      WorkerFrame frame{i, (i + 1) % library.Count(), commands[static_cast<std::size_t>(i)], &tally};
      VYRASendMessageToPlugin(i + 1, message, &frame);
    }
  }

  session.Compare("frame", size, 1,
                  {{kLibrary, [&](benchmark::State& state) {
                      tally = {};
                      for ([[maybe_unused]] auto iteration : state) RunFrame(commands);
                      if (!IsComplete(tally, static_cast<long>(state.iterations()), library.Count())) {
                        state.SkipWithError("a worker did not do its load");
                      }
                    }}});
}

}  // namespace bench
