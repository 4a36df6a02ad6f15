#include "RatioReporter.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace bench {

RatioReporter::RatioReporter(std::vector<Comparison> wanted)
    : ConsoleReporter(isatty(STDOUT_FILENO) != 0 ? OO_ColorTabular : OO_Tabular),
      comparisons(std::move(wanted)) {}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
    const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
    times[run.run_name.function_name].push_back(seconds * 1e9);
  }
}

void RatioReporter::Finalize() {
  ConsoleReporter::Finalize();
  std::printf("\n%-28s %12s %12s %8s\n", "Compared with bare calls", "library", "bare", "ratio");
  for (const Comparison& comparison : comparisons) {
    const double measured = Nanoseconds(comparison.measured);
    const double bare = Nanoseconds(comparison.bare);
    if (measured <= 0 || bare <= 0) continue;
    std::printf("%-28s %9.2f ns %9.2f ns %7.1fx\n", comparison.measured.c_str(), measured, bare,
                measured / bare);
  }
}

double RatioReporter::Nanoseconds(const std::string& name) const {
  const auto found = times.find(name);
  if (found == times.end()) return 0;
  std::vector<double> sorted = found->second;
  std::sort(sorted.begin(), sorted.end());
  return sorted[sorted.size() / 2];
}

}  // namespace bench
