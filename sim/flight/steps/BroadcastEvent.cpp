#include <fmt/core.h>
#include <algorithm>
#include <array>
#include <limits>

#include "flight/steps/Steps.h"
#include "host/Events.h"

namespace sim {
namespace {

constexpr std::array kBroadcasts = {
    static_cast<int>(VYRA_EVENT_BROADCAST_101), static_cast<int>(VYRA_EVENT_BROADCAST_103),
    static_cast<int>(VYRA_EVENT_BROADCAST_104), static_cast<int>(VYRA_EVENT_BROADCAST_105),
    static_cast<int>(VYRA_EVENT_BROADCAST_107), static_cast<int>(VYRA_EVENT_BROADCAST_108)};

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const int event = entry.WholeNumber("broadcastEvent");
  if (std::ranges::find(kBroadcasts, event) == kBroadcasts.end())
    entry.FailAtValue("broadcastEvent",
                      fmt::format("event {} is no broadcast: 2, 4, 6, 7, 11 and 13 are", event));
  return [event] {
    TellLibrary(event, nullptr);
    return Outcome{true, fmt::format("event {} told to all plugins", event)};
  };
}

}  // namespace

StepWord BroadcastEventStep() {
  return {{.key = WholeNumberKey("broadcastEvent", 0, std::numeric_limits<int>::max(),
                                 "calls one of the events 2, 4, 6, 7, 11 and 13"),
           .others = {}},
          Read};
}

}  // namespace sim
