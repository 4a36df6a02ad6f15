#include "report/Moment.h"

#include <fmt/core.h>

namespace sim {

std::string MomentName(int moment) {
  if (moment == kAfterStart) return "start";
  if (moment == kAtEnd) return "end";
  if (moment == kAfterShutdown) return "shutdown";
  return fmt::format("frame {}", moment);
}

}  // namespace sim
