#include "supervise/Unsupervised.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "host/FlightBoard.h"
#include "supervise/CallNotes.h"
#include "supervise/EndRequest.h"
#include "supervise/FaultHandler.h"

namespace sim {
namespace {

void (*gConclude)(const BadEnd& end) = nullptr;

void ConcludeExit() {
  if (getpid() != gBoard->flyer || gBoard->hasEnded.exchange(true)) return;
  GatherExit();
  gConclude(Blame(EvidenceOf(getpid(), gBoard->fault), Result::Exited, "exit"));
  std::fflush(nullptr);
  _exit(kExitPluginEndedFlight);
}

}  // namespace

void FlyHere(const std::function<void()>& fly, void (*conclude)(const BadEnd& end)) {
  gConclude = conclude;
  gBoard->flyer = getpid();
  HandleEndRequests();
  std::atexit(ConcludeExit);
  // cppcheck-suppress ignoredReturnValue ; there is room for 32, and this is the first
  std::at_quick_exit(ConcludeExit);
  NoteCalls();
  fly();
  gBoard->hasEnded = true;
}

}  // namespace sim
