#include "window/costs/FoldedCalls.h"

namespace sim {

std::vector<FoldedCall> FoldCalls(std::span<const RecordedCall> calls) {
  std::vector<FoldedCall> folded;
  bool mayGrow = false;  // the last one is without calls inside it
  for (std::size_t index = 0; index < calls.size(); ++index) {
    const RecordedCall& call = calls[index];
    const bool hasInner = index + 1 < calls.size() && calls[index + 1].depth > call.depth;
    const RecordedCall* const last = folded.empty() ? nullptr : &folded.back().first;
    const bool isAlike = mayGrow && !hasInner && last->depth == call.depth && last->plugin == call.plugin &&
                         last->kind == call.kind;
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
