// The benchmarks' table, followed by how each measurement compares with its bare counterpart.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

// What is divided by what: the names under which both were registered.
struct Comparison {
  std::string measured;
  std::string bare;
};

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  explicit RatioReporter(std::vector<Comparison> wanted);

  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  // The median of the repetitions of one benchmark in nanoseconds of processor time, 0 when it did not run.
  double Nanoseconds(const std::string& name) const;

  std::vector<Comparison> comparisons;
  std::map<std::string, std::vector<double>> times;
};

}  // namespace bench
