// The rows of the table: what the library is held against, and how much it may cost at most.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Session.h"

namespace bench {

inline constexpr double kNoBound = 0;

struct Target {
  std::string work;
  std::string measure;
  std::size_t size;
  std::string against;        // a contender, whose cost is the yardstick; "" for an absolute bound
  double bound;               // a ratio, or a value in the measure's unit; kNoBound for comparison only
  std::size_t otherSize = 0;  // when the yardstick is the library itself at another size
};

struct Verdict {
  Target target;
  double cost;       // the library's, in `unit`
  double yardstick;  // what `cost` is divided by; for an absolute bound the bound itself
  std::string unit;
  double ratio;  // to be at most target.bound; for an absolute bound to be at most 1
  bool reached;  // true where there is no bound
};

const std::vector<Target>& Targets();

// What a session was asked to run.
enum class Extent { everyMeasure, someMeasures };

// The rows whose contenders took part in a session. Throws for a target that no session could judge.
std::vector<Verdict> Judge(const Session& session, Extent extent);

}  // namespace bench
