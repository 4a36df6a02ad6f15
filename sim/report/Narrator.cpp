// The narrator's two streams.
#include "report/Narrator.h"

#include <fmt/core.h>
#include <unistd.h>

#include <cstdio>

#include "report/Moment.h"

namespace sim {
namespace {

constexpr std::chrono::milliseconds kProgressInterval{250};

}  // namespace

Narrator::Narrator(bool wantsProgress)
    : showsProgress(wantsProgress && isatty(STDERR_FILENO) != 0),
      nextProgress(std::chrono::steady_clock::now() + kProgressInterval) {}

void Narrator::Tell(int moment, std::string_view text) {
  ClearProgress();
  fmt::print("{:<12}{}\n", MomentName(moment), text);
}

void Narrator::ShowProgress(int frame, int frames) {
  if (!showsProgress) return;
  const auto now = std::chrono::steady_clock::now();
  if (now < nextProgress) return;
  nextProgress = now + kProgressInterval;
  lineIsShown = true;
  fmt::print(stderr, "\rframe {} of {} ({} %)", frame, frames, 100LL * frame / frames);
}

void Narrator::ClearProgress() {
  if (lineIsShown) fmt::print(stderr, "\r\x1b[K");
  lineIsShown = false;
}

}  // namespace sim
