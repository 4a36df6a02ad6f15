#include "report/Histogram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {

using sim::Histogram;
using sim::Nanoseconds;

// The smallest time that this share of the sorted times do not exceed.
Nanoseconds ExactPercentile(const std::vector<Nanoseconds>& sorted, double percent) {
  const auto rank = static_cast<std::size_t>(std::ceil(static_cast<double>(sorted.size()) * percent / 100));
  return sorted[std::max<std::size_t>(rank, 1) - 1];
}

TEST(Histogram, PercentilesAreWithinOneIn64OfTheExactOnes) {
  std::mt19937_64 random(1);  // NOLINT: the same times in each run
  std::uniform_real_distribution<double> exponent(0.0, std::log2(static_cast<double>(Histogram::kEnd)));
  Histogram histogram{};
  std::vector<Nanoseconds> times;
  for (int i = 0; i < 20'000; ++i) {
    times.push_back(static_cast<Nanoseconds>(std::exp2(exponent(random))));
    histogram.Add(times.back());
  }
  std::ranges::sort(times);
  for (const double percent : {0.1, 1.0, 10.0, 25.0, 50.0, 75.0, 90.0, 99.0, 99.9, 100.0}) {
    const auto exact = static_cast<double>(ExactPercentile(times, percent));
    EXPECT_NEAR(static_cast<double>(histogram.Percentile(percent)), exact, exact / 64) << percent << " %";
  }
}

TEST(Histogram, ShortTimesCountSumAndLongestAreExact) {
  Histogram histogram{};
  for (Nanoseconds time = 0; time < 64; ++time) histogram.Add(time);
  for (Nanoseconds time = 0; time < 64; ++time)
    EXPECT_EQ(histogram.Percentile(static_cast<double>(time + 1) * 100 / 64), time);
  histogram.Add(1'234'567);
  EXPECT_EQ(histogram.Count(), 65U);
  EXPECT_EQ(histogram.Sum(), 63U * 64 / 2 + 1'234'567);
  EXPECT_EQ(histogram.Longest(), 1'234'567U);
  EXPECT_EQ(histogram.Percentile(100), 1'234'567U);
}

TEST(Histogram, ZerosAreAddedAtOnce) {
  Histogram histogram{};
  histogram.Add(1000);
  histogram.AddZeros(98);
  histogram.Add(1000);
  EXPECT_EQ(histogram.Percentile(98), 0U);
  EXPECT_NEAR(static_cast<double>(histogram.Percentile(99)), 1000, 1000.0 / 64);
  EXPECT_DOUBLE_EQ(histogram.Mean(), 20);
}

TEST(Histogram, TimesBeyondTheLastBucketKeepTheirLength) {
  Histogram histogram{};
  const Nanoseconds hour = 3'600'000'000'000;
  histogram.Add(hour);
  histogram.Add(hour);
  histogram.Add(~Nanoseconds{0} / 4);
  EXPECT_EQ(histogram.Longest(), ~Nanoseconds{0} / 4);
  EXPECT_GE(histogram.Percentile(50), Histogram::kEnd - Histogram::kEnd / 64);
}

TEST(Histogram, EmptyOneHasNoTimes) {
  const Histogram histogram{};
  EXPECT_EQ(histogram.Percentile(50), 0U);
  EXPECT_EQ(histogram.Mean(), 0.0);
}

}  // namespace
