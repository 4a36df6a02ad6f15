// What is wanted to be known of the plugins' costs.
#pragma once

#include <limits>
#include <string>

namespace sim {

struct CostOptions {
  bool wantsTable = false;
  double budgetMs = 0.0;     // per frame, of each plugin; 0 for none
  std::string traceFile;     // empty: none
  int firstTracedFrame = 0;  // 0 is what comes before the first frame
  int lastTracedFrame = std::numeric_limits<int>::max();
};

}  // namespace sim
