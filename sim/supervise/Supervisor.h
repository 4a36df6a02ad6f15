// The supervisor: flies in a process of its own, so that a plugin can end that, but not the report.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "report/Clock.h"
#include "supervise/Blame.h"
#include "supervise/StallWatch.h"

namespace sim {

struct SupervisorOptions {
  Seconds stallLimit{};    // 0 for none
  bool wantsCore = false;  // the flight is let die of the signal that hit it
};

// What became of the flying process.
struct FlightEnd {
  std::optional<BadEnd> badEnd;
  Nanoseconds noticed = 0;  // when there is one: the time by ReadClock
  int exitCode = 0;         // when there is none
  int signal = 0;           // of which it died
};

// Whether this process is being traced: then a debugger wants to see the faults itself.
bool IsTraced();

// Flies in a child of this process, which must have one thread alone, and waits for its end. `fly` is called
// in the child, with a file descriptor that it may write lines to; what it returns is the child's exit code.
// Each line is given to `takeLine`, without its end. Throws std::system_error.
FlightEnd Supervise(const SupervisorOptions& options, const std::function<int(int)>& fly,
                    const std::function<void(std::string_view)>& takeLine);

// Ends this process as a signal ends one, without a core file of its own.
[[noreturn]] void DieOf(int signal);

}  // namespace sim
