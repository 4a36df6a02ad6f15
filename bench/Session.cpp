#include "Session.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace bench {

namespace {

// Takes the times of one round from Google Benchmark, whose own table is not printed.
class Collector : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& /*context*/) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred) throw std::runtime_error(run.benchmark_name() + ": " + run.error_message);
      times.push_back(run.cpu_accumulated_time / static_cast<double>(run.iterations) * 1e9);
    }
  }

  std::vector<double> times;
};

// What one iteration took each contender, in nanoseconds.
std::vector<double> RunRound(const std::vector<Contender>& contenders, const SessionOptions& options) {
  benchmark::ClearRegisteredBenchmarks();
  for (const Contender& contender : contenders) {
    // Google Benchmark tries shorter runs first, to find out how many iterations it takes. So what it
    // measures finds the caches as the contender itself leaves them, not as the one before it did.
    benchmark::RegisterBenchmark(contender.name.c_str(), contender.loop)->MinTime(options.secondsPerRun);
  }
  Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  return collector.times;
}

}  // namespace

double Median(std::vector<double> values) {
  if (values.empty()) return 0;
  const std::size_t middle = values.size() / 2;
  std::sort(values.begin(), values.end());
  return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double Result::Median() const { return bench::Median(values); }

double MedianRatio(const Result& above, const Result& below) {
  std::vector<double> ratios;
  for (std::size_t i = 0; i < above.values.size(); ++i) ratios.push_back(above.values[i] / below.values[i]);
  return Median(std::move(ratios));
}

void Session::Compare(const std::string& measure, std::size_t size, std::size_t units,
                      const std::vector<Contender>& contenders) {
  std::vector<Contender> present;
  for (const Contender& contender : contenders) {
    if (contender.loop) {
      present.push_back(contender);
    } else {
      leftOut.emplace(measure, contender.name);
    }
  }
  const std::size_t first = results.size();
  for (const Contender& contender : present) results.push_back({measure, size, contender.name, "ns", {}});

  for (int repetition = 0; repetition < options.repetitions; ++repetition) {
    const std::vector<double> times = RunRound(present, options);
    for (std::size_t i = 0; i < present.size(); ++i) {
      results[first + i].values.push_back(times[i] / static_cast<double>(units));
    }
  }

  fmt::print("  {}{}:", measure, size != 0 ? fmt::format(" ({})", size) : "");
  for (std::size_t i = first; i < results.size(); ++i) {
    fmt::print("{} {} {:.2f} ns", i == first ? "" : ",", results[i].contender, results[i].Median());
  }
  fmt::print("\n");
  std::fflush(stdout);
}

void Session::Subtract(const std::string& name, const std::string& measure, std::size_t size,
                       const std::string& contender, const std::string& other) {
  const Result* above = Find(measure, size, contender);
  const Result* below = Find(measure, size, other);
  if (above == nullptr || below == nullptr) throw std::logic_error(name + ": there is nothing to subtract");
  Result difference = {name, size, contender, above->unit, {}};
  for (std::size_t i = 0; i < above->values.size(); ++i) {
    difference.values.push_back(above->values[i] - below->values[i]);
  }
  results.push_back(std::move(difference));
}

void Session::Keep(const std::string& measure, const std::string& contender, const std::string& unit,
                   double value) {
  results.push_back({measure, 0, contender, unit, {value}});
  fmt::print("  {}: {} {:.1f} {}\n", measure, contender, value, unit);
}

void Session::Keep(const std::string& measure, std::size_t size, const std::string& contender,
                   const std::vector<double>& values) {
  results.push_back({measure, size, contender, "ns", values});
  fmt::print("  {} ({}): {} {:.1f} ns\n", measure, size, contender, results.back().Median());
  std::fflush(stdout);
}

const Result* Session::Find(const std::string& measure, std::size_t size,
                            const std::string& contender) const {
  const auto found = std::find_if(results.begin(), results.end(), [&](const Result& result) {
    return result.measure == measure && result.size == size && result.contender == contender;
  });
  return found != results.end() ? &*found : nullptr;
}

bool Session::Ran(const std::string& measure) const {
  return std::any_of(results.begin(), results.end(),
                     [&](const Result& result) { return result.measure == measure; });
}

bool Session::WasLeftOut(const std::string& measure, const std::string& contender) const {
  return leftOut.contains({measure, contender});
}

}  // namespace bench
