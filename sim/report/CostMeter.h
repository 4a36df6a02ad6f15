// Measures what plugins take: told of each call and each frame as it begins and ends, it keeps their times in
// a CostBlock.
//
// A call's time is its own: that of calls inside it, of an accessor of another plugin say, belongs to their
// plugins. What a plugin spends in the library and in services of the simulator is its own.
#pragma once

#include <vector>

#include "report/CostBlock.h"

namespace sim {

// A call as the library's watcher is told of it. The texts stay as they are for the life of the process.
struct MeteredCall {
  int plugin;  // its ID
  int kind;
  const char* name;  // empty, as the signature, before the plugin's start has ended
  const char* signature;
  const char* path;
};

class CostMeter {
 public:
  // The block must outlive this. `now` is a reading of one clock, here and below.
  CostMeter(CostBlock& costs, Nanoseconds now);

  void BeginFrame(int frame, Nanoseconds now);
  void EndFrame(Nanoseconds now);

  void BeginCall(const MeteredCall& call, Nanoseconds now);
  void EndCall(Nanoseconds now);

  // The time since the last call began or ended was the simulator's own, and is nobody's cost.
  void Excuse(Nanoseconds now) { block.lastSwitch = now; }

 private:
  // The module behind a plugin's ID, as long as the call's path is the same text.
  struct Known {
    const char* path = nullptr;
    const char* name = nullptr;
    int plugin = 0;
  };

  int PluginOf(const MeteredCall& call);
  void ChargeInnermost(Nanoseconds now);
  void NoteEndOfLifeCall(const OpenCall& call);
  void EndFrameOf(MeteredPlugin& plugin) const;

  CostBlock& block;
  std::vector<Known> knownPlugins;  // by ID
};

// A plugin has ended the flight: the calls that are under way end now as far as the trace goes, and so does
// the frame. It does not count, as it was not flown to its end.
void CutShort(CostBlock& block, Nanoseconds now);

}  // namespace sim
