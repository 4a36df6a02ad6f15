#include "Targets.h"

#include <fmt/core.h>

#include <stdexcept>

#include "measures/Measures.h"

namespace bench {

namespace {

constexpr double kFrameNanoseconds = 1e9 / 60;

// The result that a row needs. Null where the session could not have it: the contender is a peer that
// vyra-bench was built without, or the size or the measure was left out of the run. A row that no run could
// ever fill is a mistake in the list of targets.
const Result* FindFor(const Target& target, std::size_t size, const std::string& contender,
                      const Session& session, Extent extent) {
  const Result* result = session.Find(target.measure, size, contender);
  if (result != nullptr || session.WasLeftOut(target.measure, contender)) return result;
  const bool measureRan = session.Ran(target.measure);
  if (!measureRan && extent == Extent::someMeasures) return nullptr;
  if (measureRan && size > session.Options().largest) return nullptr;
  throw std::logic_error(fmt::format("the target \"{}\" has no measure: nothing took \"{}\" of {} at size {}",
                                     target.work, target.measure, contender, size));
}

std::optional<Verdict> JudgeRow(const Session& session, const Target& target, Extent extent) {
  const Result* library = FindFor(target, target.size, kLibrary, session, extent);
  if (library == nullptr) return std::nullopt;
  Verdict verdict{target, library->Median(), target.bound, library->unit, 0, false};
  if (target.against.empty()) {
    verdict.ratio = verdict.cost / target.bound;
    verdict.reached = verdict.ratio <= 1;
    return verdict;
  }
  const std::size_t otherSize = target.otherSize != 0 ? target.otherSize : target.size;
  const Result* other = FindFor(target, otherSize, target.against, session, extent);
  if (other == nullptr) return std::nullopt;
  verdict.yardstick = other->Median();
  verdict.ratio = MedianRatio(*library, *other);
  verdict.reached = target.bound == kNoBound || verdict.ratio <= target.bound;
  return verdict;
}

}  // namespace

const std::vector<Target>& Targets() {
  static const std::vector<Target> targets = {
      {"read an int", "read an int", 0, kSimGear, 1.25},
      {"read an int", "read an int", 0, kSimGearVariable, kNoBound},
      {"read an int", "read an int", 0, kBareCall, 2},
      {"read a float", "read a float", 0, kSimGear, 1.25},
      {"read a float", "read a float", 0, kSimGearVariable, kNoBound},
      {"read a float", "read a float", 0, kBareCall, 2},
      {"read a double", "read a double", 0, kSimGear, 1.25},
      {"read a double", "read a double", 0, kSimGearVariable, kNoBound},
      {"read a double", "read a double", 0, kBareCall, 2},
      {"write an int", "write an int", 0, kSimGear, 0.25},
      {"write a float", "write a float", 0, kSimGear, 0.25},
      {"write a double", "write a double", 0, kSimGear, 0.25},
      {"find among 100", "find by name", 100, kSimGear, 0.1},
      {"find among 10,000", "find by name", 10'000, kSimGear, 0.1},
      {"find among 10,000", "find by name", 10'000, kBareTable, 1.3},
      {"find among 100,000", "find by name", 100'000, kSimGear, 0.1},
      {"check a handle among 100,000", "check a handle", 100'000, kLibrary, 3, 100},
      {"due flight loop, of 100", "due flight loop", 100, kBareCall, 2.5},
      {"due flight loop, of 100", "due flight loop", 100, kBoostSignals, 0.15},
      {"due flight loop, of 10,000", "due flight loop", 10'000, kSigc, 0.5},
      {"due flight loop, of 10,000", "due flight loop", 10'000, kBoostSignals, 0.15},
      {"flight loop not due, of 100", "flight loop that is not due", 100, kBareCall, 1},
      {"flight loop not due, of 10,000", "flight loop that is not due", 10'000, kBareCall, 1},
      {"telling a watcher of a call, beside two clock readings", "telling a watcher of a call", 100, "", 15},
      {"draw callback, of 100", "draw callback", 100, kBareCall, 2.5},
      {"key sniffer, of 100", "key sniffer", 100, kBareCall, 2.5},
      {"window drawn, of 100", "window drawn", 100, kBareCall, 2.5},
      {"window under the mouse, of 100", "window under the mouse", 100, kBareCall, 2.5},
      {"window under the cursor, of 100", "window under the cursor", 100, kBareCall, 2.5},
      {"command phase among 10,000", "command phase", 10'000, kBareTable, 3},
      {"shared-data write, per subscriber of 10", "shared-data subscriber", 10, kBareCall, 2.5},
      {"load, start, enable, disable, stop, unload", "module's whole life", 0, kBareModules, 1.15},
      {"load, start, enable, disable, stop, unload", "module's whole life", 0, kGModule, kNoBound},
      {"start-up with 500 plugins, per plugin", "start-up", 500, kBareModules, 1.2},
      {"a frame of 100 plugins, of 60 Hz", "frame", 100, "", 0.0025 * kFrameNanoseconds},
      {"memory per dataref beyond its name", "memory per dataref beyond its name", 0, "", 320},
      {"memory per idle plugin beyond its module", "memory per idle plugin beyond its module", 0, "", 4096},
  };
  return targets;
}

std::vector<Verdict> Judge(const Session& session, Extent extent) {
  std::vector<Verdict> verdicts;
  for (const Target& target : Targets()) {
    if (const auto verdict = JudgeRow(session, target, extent)) verdicts.push_back(*verdict);
  }
  return verdicts;
}

}  // namespace bench
