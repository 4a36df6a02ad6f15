#include <fmt/core.h>

#include "flight/steps/Steps.h"
#include "report/Moment.h"

namespace sim {
namespace {

// Looks at the claim before each frame, the first time before anything of that frame has happened.
class Wait {
 public:
  Wait(Claim claimToWaitFor, int frames) : claim(std::move(claimToWaitFor)), limit(frames) {}

  Outcome operator()() {
    const Finding finding = claim.check();
    if (finding.holds) return {true, fmt::format("waited {} frames: {}", waited, claim.text)};
    if (waited++ < limit) return {.succeeded = true, .text = "", .isDone = false};
    return {false, fmt::format("waited {} frames in vain: {} (found {})", limit, claim.text, finding.found)};
  }

 private:
  Claim claim;
  int limit;
  int waited = 0;
};

Effect Read(const Entry& entry, const FlightContext& context) {
  const Entry expectation = entry.Object("waitUntil");
  return Wait(FindExpectationInStep(expectation).read(expectation, context), entry.WholeNumber("limit"));
}

}  // namespace

StepWord WaitUntilStep() {
  return {{.key = ExpectationKey("waitUntil", "holds up the steps that are `later` until this holds"),
           .others = {WholeNumberKey("limit", 0, kMaxFrames,
                                     "frames after which it fails; 0 only looks, before this frame")}},
          Read};
}

}  // namespace sim
