// Finding a time's bucket, and the time that stands for a bucket.
#include "report/Histogram.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace sim {

// The first two groups have a bucket for each nanosecond; in each group after them a bucket is twice as wide
// as in the one before.
std::size_t Histogram::BucketOf(Nanoseconds time) {
  const Nanoseconds inRange = std::min(time, kEnd - 1);
  if (inRange < kGroup) return inRange;
  const auto shift = static_cast<unsigned>(std::bit_width(inRange)) - kGroupBits - 1;
  return shift * kGroup + (inRange >> shift);
}

Nanoseconds Histogram::MiddleOf(std::size_t bucket) {
  if (bucket < kGroup) return bucket;
  const std::size_t shift = bucket / kGroup - 1;
  const Nanoseconds lowest = (bucket - shift * kGroup) << shift;
  return lowest + ((Nanoseconds{1} << shift) >> 1U);
}

void Histogram::Add(Nanoseconds time) {
  ++count;
  sum += time;
  longest = std::max(longest, time);
  ++buckets[BucketOf(time)];
}

void Histogram::AddZeros(std::uint32_t times) {
  count += times;
  buckets[0] += times;
}

double Histogram::Mean() const {
  return count == 0 ? 0.0 : static_cast<double>(sum) / static_cast<double>(count);
}

Nanoseconds Histogram::Percentile(double percent) const {
  if (count == 0) return 0;
  const auto rank = static_cast<std::uint64_t>(std::ceil(static_cast<double>(count) * percent / 100.0));
  if (rank >= count) return longest;
  std::uint64_t passed = 0;
  std::size_t bucket = 0;
  while (bucket + 1 < kBuckets && (passed += buckets[bucket]) < rank) ++bucket;
  return std::min(MiddleOf(bucket), longest);
}

}  // namespace sim
