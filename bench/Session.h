// A run of the benchmarks: it measures contenders by turns and keeps what a unit of work cost each of them.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace bench {

// Does a piece of work as often as the state asks. It owns what it works on. An empty one does not take part.
using Loop = std::function<void(benchmark::State&)>;

// A way to do a piece of work: the library's, a peer's or the bare machine's.
struct Contender {
  std::string name;
  Loop loop;
};

// What one contender took for one unit of a measure at one size, once per repetition.
struct Result {
  std::string measure;
  std::size_t size;  // 0: the measure has none
  std::string contender;
  std::string unit;
  std::vector<double> values;

  double Median() const;
};

double Median(std::vector<double> values);

// The median of the ratios that two contenders had in each repetition.
double MedianRatio(const Result& above, const Result& below);

struct SessionOptions {
  int repetitions = 51;
  double secondsPerRun = 0.005;   // of processor time, per contender and repetition, at least
  std::size_t largest = 100'000;  // sizes above it are left out
};

class Session {
 public:
  explicit Session(SessionOptions wanted) : options(wanted) {}

  // Runs the contenders one after the other, as often as there are repetitions, so that what slows the
  // machine down for a while slows them all. An iteration of a loop does `units` units of work.
  void Compare(const std::string& measure, std::size_t size, std::size_t units,
               const std::vector<Contender>& contenders);

  // Keeps a value that is counted, not timed.
  void Keep(const std::string& measure, const std::string& contender, const std::string& unit, double value);

  // Keeps the times that each unit of work took at one size, in nanoseconds.
  void Keep(const std::string& measure, std::size_t size, const std::string& contender,
            const std::vector<double>& values);

  // Keeps what one contender of a measure took longer than another in each repetition, as a measure of the
  // first contender's own.
  void Subtract(const std::string& name, const std::string& measure, std::size_t size,
                const std::string& contender, const std::string& other);

  const SessionOptions& Options() const { return options; }
  const std::vector<Result>& Results() const { return results; }
  const Result* Find(const std::string& measure, std::size_t size, const std::string& contender) const;

  // Whether a measure was taken, at whichever size; and whether a contender of it did not take part.
  bool Ran(const std::string& measure) const;
  bool WasLeftOut(const std::string& measure, const std::string& contender) const;

 private:
  SessionOptions options;
  std::vector<Result> results;
  std::set<std::pair<std::string, std::string>> leftOut;  // measures, and contenders of them
};

}  // namespace bench
