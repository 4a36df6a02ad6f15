// How often times of each length came up: a table of fixed size, however many times are added. A group of
// buckets covers each power of two, so a percentile is off by 1 part in 64 at most, be it of nanoseconds or
// of minutes; count, sum and longest are exact.
//
// All bytes zero is an empty histogram, and it holds no pointers, so it can lie in memory that processes
// share.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "report/Clock.h"

namespace sim {

class Histogram {
 public:
  // Times from here on share the last bucket: some 18 minutes.
  static constexpr Nanoseconds kEnd = Nanoseconds{1} << 40U;

  void Add(Nanoseconds time);
  // As often Add(0).
  void AddZeros(std::uint32_t times);

  std::uint64_t Count() const { return count; }
  Nanoseconds Sum() const { return sum; }
  Nanoseconds Longest() const { return longest; }
  double Mean() const;
  // The smallest time that at least this share of all do not exceed, within the error above; 0 when empty.
  Nanoseconds Percentile(double percent) const;

 private:
  static constexpr unsigned kGroupBits = 5;
  static constexpr std::size_t kGroup = std::size_t{1} << kGroupBits;
  static constexpr std::size_t kBuckets = (40 - kGroupBits + 1) * kGroup;

  static std::size_t BucketOf(Nanoseconds time);
  static Nanoseconds MiddleOf(std::size_t bucket);

  std::uint64_t count;
  Nanoseconds sum;
  Nanoseconds longest;
  std::array<std::uint32_t, kBuckets> buckets;
};

}  // namespace sim
