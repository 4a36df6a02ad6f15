#include "window/costs/FoldedCalls.h"

namespace sim {
namespace {

bool IsAlike(const RecordedCall& left, const RecordedCall& right) {
  return left.depth == right.depth && left.plugin == right.plugin && left.kind == right.kind;
}

}  // namespace

std::vector<FoldedCall> FoldCalls(std::span<const RecordedCall> calls) {
  std::vector<FoldedCall> folded;
  bool mayGrow = false;  // the last one is without calls inside it
  for (std::size_t index = 0; index < calls.size(); ++index) {
    const RecordedCall& call = calls[index];
    const bool hasInner = index + 1 < calls.size() && calls[index + 1].depth > call.depth;
    const bool isAlike = mayGrow && !hasInner && IsAlike(folded.back().first, call);
    if (!isAlike) folded.push_back({.first = call, .times = 0});
    FoldedCall& line = folded.back();
    ++line.times;
    line.duration += call.duration;
    line.own += call.own;
    mayGrow = !hasInner;
  }
  return folded;
}

}  // namespace sim
