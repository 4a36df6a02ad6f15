#include "host/CallCounts.h"

#include <array>
#include <functional>
#include <map>

#include "VYRAWatch.h"
#include "host/CallWatchers.h"

namespace sim {
namespace {

bool gIsWanted = false;

using CountsOfKinds = std::array<int, VYRA_CALL_ERROR + 1>;

// By signature, as text: the same plugin may be loaded again.
std::map<std::string, CountsOfKinds, std::less<>> gCounts;

void Count(const VYRARunningCall* call, void* /*refcon*/) {
  const std::string_view signature = call->signature;
  auto counts = gCounts.find(signature);
  if (counts == gCounts.end()) counts = gCounts.try_emplace(std::string(signature)).first;
  ++counts->second.at(static_cast<std::size_t>(call->kind));
}

void Ignore(const VYRARunningCall* /*call*/, void* /*refcon*/) {}

}  // namespace

void CountCalls() { gIsWanted = true; }

void StartCallCounts() {
  if (!gIsWanted) return;
  AddCallWatcher({.structSize = sizeof(VYRAWatcher),
                  .wantsAccessors = 0,
                  .begin = Count,
                  .end = Ignore,
                  .refcon = &gCounts});
}

int CallCount(const std::string& signature, std::string_view kind) {
  const auto found = gCounts.find(signature);
  if (found == gCounts.end()) return 0;
  int number = 0;
  while (number < VYRA_CALL_ERROR && VYRAGetCallKindName(number) != kind) ++number;
  return VYRAGetCallKindName(number) == kind ? found->second.at(static_cast<std::size_t>(number)) : 0;
}

}  // namespace sim
