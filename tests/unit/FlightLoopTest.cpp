// Flight loops: when they are due, with what they are called, and what happens to the list while they run.
#include <string>

#include "PluginFixture.h"
#include "VYRAProcessing.h"
#include "VYRAProcessingLoops.h"

namespace {

class FlightLoops : public PluginFixture {
 protected:
  struct Loop {
    char name;
    float result;
    void (*action)(Loop& self) = nullptr;
    VYRAFlightLoopID id = nullptr;
  };

  static float Call(float sinceLastCall, float time, int counter, void* refcon) {
    Loop& loop = *static_cast<Loop*>(refcon);
    trace.emplace_back(1, loop.name);
    lastSinceLastCall = sinceLastCall;
    EXPECT_EQ(time, now);
    EXPECT_EQ(counter, VYRAGetCycleNumber());
    if (loop.action != nullptr) loop.action(loop);
    return loop.result;
  }

  static void Create(Loop& loop, int phase = 0) {
    const VYRAFlightLoopParams params = {sizeof(params), phase, Call, &loop};
    loop.id = VYRACreateFlightLoop(&params);
  }

  static void Start(Loop& loop, float interval, int phase = 0) {
    Create(loop, phase);
    VYRAScheduleFlightLoop(loop.id, interval, 0);
  }

  // Runs one pass at a time in seconds; the names of the loops that were called.
  static std::string Pass(float time, int phase = 0) {
    trace.clear();
    now = time;
    gHost.Answer("GetElapsedTime", time);
    VYRAProcessingRunPass(time, phase);
    std::string called;
    for (const std::string& name : trace) called += name;
    return called;
  }

  static inline float now = 0;
  static inline float lastSinceLastCall = 0;
};

TEST_F(FlightLoops, SecondsCountFromCreationOrFromNowAsAsked) {
  Loop a{'a', 0};
  Loop b{'b', 0};
  gHost.Answer("GetElapsedTime", 10);
  Create(a);
  Create(b);
  EXPECT_EQ(Pass(10), "") << "nothing is scheduled yet";
  gHost.Answer("GetElapsedTime", 10.5);
  VYRAScheduleFlightLoop(a.id, 1, 0);
  VYRAScheduleFlightLoop(b.id, 1, 1);
  EXPECT_EQ(Pass(10.9F), "");
  EXPECT_EQ(Pass(11), "a");
  EXPECT_EQ(lastSinceLastCall, 1);
  EXPECT_EQ(Pass(11.5F), "b");
  EXPECT_EQ(Pass(99), "") << "both returned 0";
}

TEST_F(FlightLoops, PassesAreCountedOverBothPhases) {
  Loop every{'e', -1};
  Loop second{'s', -2};
  Loop late{'l', -1};
  Start(every, -1);
  Start(second, -2);
  Start(late, -1, 1);
  EXPECT_EQ(Pass(1), "e");
  EXPECT_EQ(Pass(1, 1), "l");
  EXPECT_EQ(Pass(2), "se") << "two passes went by in a frame of both phases";
  EXPECT_EQ(Pass(3), "e");
  EXPECT_EQ(Pass(4), "se");
}

TEST_F(FlightLoops, NewestIsCalledFirstAndNamesReachAllOrTheNewest) {
  Loop a{'a', -1};
  Loop b{'b', -1};
  Start(a, -1);
  Start(b, -1);
  Start(a, -1);
  EXPECT_EQ(Pass(1), "aba");
  VYRAUnregisterFlightLoopCallback(Call, &a);
  EXPECT_EQ(Pass(2), "ba");
  VYRARegisterFlightLoopCallback(Call, -1, &a);
  VYRASetFlightLoopCallbackInterval(Call, 0, 0, &a);
  EXPECT_EQ(Pass(3), "b");
  VYRASetFlightLoopCallbackInterval(Call, 5, 1, &a);
  VYRAUnregisterFlightLoopCallback(Call, &trace);
  EXPECT_EQ(Pass(7.9F), "b");
  EXPECT_EQ(Pass(8), "aba");
}

TEST_F(FlightLoops, DisabledOwnerKeepsItsScheduleAndIsCalledLater) {
  const VYRAPluginID plugin = AddPlugin("a");
  Loop loop{'x', 0};
  RunAs(plugin, [&] { Start(loop, 2); });
  Record(plugin).enabled = false;
  EXPECT_EQ(Pass(3), "");
  Record(plugin).enabled = true;
  EXPECT_EQ(Pass(4), "x");
  EXPECT_EQ(lastSinceLastCall, 4);
}

TEST_F(FlightLoops, CallbackMayRemoveItselfANeighbourOrEverything) {
  static Loop loops[4];
  for (int victim = 0; victim < 16; ++victim) {
    for (int i = 0; i < 4; ++i) {
      loops[i] = {static_cast<char>('0' + i), -1};
      Start(loops[i], -1);
    }
    loops[2].result = static_cast<float>(victim);  // which ones loop 2 destroys, as bits
    loops[2].action = [](Loop& self) {
      for (int i = 0; i < 4; ++i) {
        if ((static_cast<int>(self.result) >> i & 1) != 0) VYRAUnregisterFlightLoopCallback(Call, &loops[i]);
      }
      Loop* added = new Loop{'n', 0};
      Start(*added, -1);
      VYRADestroyFlightLoop(added->id);
      delete added;
    };
    std::string expected = "32";
    if ((victim & 2) == 0) expected += '1';
    if ((victim & 1) == 0) expected += '0';
    EXPECT_EQ(Pass(1), expected);
    for (Loop& loop : loops) VYRAUnregisterFlightLoopCallback(Call, &loop);
    EXPECT_EQ(Pass(1000), "");
  }
}

TEST_F(FlightLoops, StrangersAndStaleHandlesChangeNothing) {
  const VYRAPluginID owner = AddPlugin("a");
  const VYRAPluginID stranger = AddPlugin("b");
  Loop loop{'x', -1};
  RunAs(owner, [&] { Start(loop, -1); });
  RunAs(stranger, [&] {
    VYRAScheduleFlightLoop(loop.id, 0, 0);
    VYRADestroyFlightLoop(loop.id);
    VYRADestroyFlightLoop(nullptr);
    VYRAScheduleFlightLoop(reinterpret_cast<VYRAFlightLoopID>(&loop), 1, 1);
  });
  EXPECT_EQ(Pass(1), "x");
  const std::string scheduling = "2: Attempt to schedule a flight loop callback owned by another plugin.";
  const std::string removing = "2: Attempt to remove a flight loop callback owned by another plugin.";
  EXPECT_EQ(errors, (Lines{scheduling, removing, removing, scheduling}));
  RunAs(owner, [&] {
    VYRADestroyFlightLoop(loop.id);
    VYRADestroyFlightLoop(loop.id);
  });
  EXPECT_EQ(errors.size(), 5U) << "a handle is stale once destroyed";
}

TEST_F(FlightLoops, BadParametersAreReportedToThoseWhoListenAndCreatedNevertheless) {
  const VYRAFlightLoopParams bad = {23, 2, nullptr, nullptr};
  const auto create = [&] { return VYRACreateFlightLoop(&bad); };
  EXPECT_NE(create(), nullptr);
  const VYRAPluginID plugin = AddPlugin("a");
  const VYRAFlightLoopID loop = RunAs(plugin, create);
  EXPECT_EQ(errors, (Lines{"1: Illegal struct size for VYRACreateFlightLoop",
                           "1: Illegal phase type for VYRACreateFlightLoop",
                           "1: Null callback for VYRACreateFlightLoop"}));
  RunAs(plugin, [&] { VYRAScheduleFlightLoop(loop, -1, 0); });
  VYRARegisterFlightLoopCallback(nullptr, -1, nullptr);
  for (const int phase : {0, 1}) EXPECT_EQ(Pass(1, phase), "");
  EXPECT_EQ(VYRACreateFlightLoop(nullptr), nullptr);
}

TEST_F(FlightLoops, ExceptionEndsThePassAndTheNextGoesOn) {
  const VYRAPluginID plugin = AddPlugin("a");
  Loop thrower{'t', -1, [](Loop& self) {
                 VYRADestroyFlightLoop(self.id);
                 throw 1;
               }};
  Loop other{'o', -1};
  Start(other, -1);
  RunAs(plugin, [&] { Start(thrower, -1); });
  EXPECT_THROW(Pass(1), int);
  EXPECT_EQ(VYRAGetMyID(), 0);
  EXPECT_EQ(gFlightLoops.IterationDepth(), 0);
  EXPECT_EQ(Pass(2), "o");
}

}  // namespace
