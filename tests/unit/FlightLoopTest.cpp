// Flight loops: when they are due, with what they are called, and what happens to the list while they run.
#include "PluginFixture.h"
#include "VYRAProcessing.h"
#include "VYRAProcessingInternal.h"

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
    called += loop.name;
    lastSinceLastCall = sinceLastCall;
    EXPECT_EQ(time, now);
    EXPECT_EQ(counter, VYRAGetCycleNumber());
    if (loop.action != nullptr) loop.action(loop);
    return loop.result;
  }

  static void Start(Loop& loop, float interval = -1, int phase = 0) {
    const VYRAFlightLoopParams params = {sizeof(params), phase, Call, &loop};
    loop.id = VYRACreateFlightLoop(&params);
    VYRAScheduleFlightLoop(loop.id, interval, 0);
  }

  // Runs one pass at a time in seconds; the names of the loops that were called.
  static std::string Pass(float time, int phase = 0) {
    called.clear();
    now = time;
    gHost.Answer("GetElapsedTime", time);
    VYRAProcessingRunPass(time, phase);
    return called;
  }

  static inline std::string called;
  static inline float now = 0;
  static inline float lastSinceLastCall = 0;
  Loop a{'a', -1}, b{'b', -1};
};

TEST_F(FlightLoops, SecondsCountFromCreationOrFromNowAsAsked) {
  a.result = b.result = 0;
  gHost.Answer("GetElapsedTime", 10);
  Start(a, 0);
  Start(b, 0);
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
  Loop second{'s', -2};
  Start(a);
  Start(second, -2);
  Start(b, -1, 1);
  EXPECT_EQ(Pass(1), "a");
  EXPECT_EQ(Pass(1, 1), "b");
  EXPECT_EQ(Pass(2), "sa") << "two passes went by in a frame of both phases";
  EXPECT_EQ(Pass(3), "a");
  EXPECT_EQ(Pass(4), "sa");
}

TEST_F(FlightLoops, NewestIsCalledFirstAndNamesReachAllOrTheNewest) {
  for (Loop* loop : {&a, &b, &a}) Start(*loop);
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
  RunAs(plugin, [&] { Start(a, 2); });
  VYRARegistrySetEnabled(plugin, false);
  EXPECT_EQ(Pass(3), "");
  VYRARegistrySetEnabled(plugin, true);
  EXPECT_EQ(Pass(4), "a");
  EXPECT_EQ(lastSinceLastCall, 4);
}

TEST_F(FlightLoops, CallbackMayRemoveItselfANeighbourOrEverything) {
  static Loop loops[4];
  static int victims;  // the loops that loop 2 removes, as bits
  for (victims = 0; victims < 16; ++victims) {
    for (int i = 0; i < 4; ++i) Start(loops[i] = {static_cast<char>('0' + i), -1});
    loops[2].action = [](Loop&) {
      for (int i = 0; i < 4; ++i) {
        if ((victims >> i & 1) != 0) VYRAUnregisterFlightLoopCallback(Call, &loops[i]);
      }
      Loop added{'n', 0};
      Start(added);
      VYRADestroyFlightLoop(added.id);
    };
    const std::string expected[] = {"3210", "321", "320", "32"};
    EXPECT_EQ(Pass(1), expected[victims & 3]);
    for (Loop& loop : loops) VYRAUnregisterFlightLoopCallback(Call, &loop);
    EXPECT_EQ(Pass(1000), "");
  }
}

TEST_F(FlightLoops, StrangersAndStaleHandlesChangeNothing) {
  const VYRAPluginID owner = AddPlugin("a");
  RunAs(owner, [&] { Start(a); });
  RunAs(AddPlugin("b"), [&] {
    VYRAScheduleFlightLoop(a.id, 0, 0);
    VYRADestroyFlightLoop(a.id);
    VYRADestroyFlightLoop(nullptr);
    VYRAScheduleFlightLoop(reinterpret_cast<VYRAFlightLoopID>(&a), 1, 1);
  });
  EXPECT_EQ(Pass(1), "a");
  const std::string scheduling = "2: Attempt to schedule a flight loop callback owned by another plugin.";
  const std::string removing = ": Attempt to remove a flight loop callback owned by another plugin.";
  for (int i = 0; i < 2; ++i) RunAs(owner, [&] { VYRADestroyFlightLoop(a.id); });  // stale the second time
  EXPECT_EQ(errors, (Lines{scheduling, "2" + removing, "2" + removing, scheduling, "1" + removing}));
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
  Start(a);
  b.action = [](Loop& self) {
    VYRADestroyFlightLoop(self.id);
    throw 1;
  };
  RunAs(AddPlugin("a"), [&] { Start(b); });
  EXPECT_THROW(Pass(1), int);
  EXPECT_EQ(VYRAGetMyID(), 0);
  EXPECT_EQ(gFlightLoops.IterationDepth(), 0);
  EXPECT_EQ(Pass(2), "a");
}

TEST_F(FlightLoops, CallThatThrewWasACallAndTheNextComesAnIntervalLater) {
  a.action = b.action = [](Loop&) { throw 1; };
  b.result = 0;
  Start(a, 2);
  Start(b, -2);
  EXPECT_EQ(Pass(1), "");
  EXPECT_THROW(Pass(1.5F), int);
  EXPECT_EQ(called, "b");
  EXPECT_THROW(Pass(2.5F), int);
  EXPECT_EQ(called, "a");
  a.action = b.action = nullptr;
  EXPECT_EQ(Pass(3), "b");
  EXPECT_EQ(Pass(4.4F), "");
  EXPECT_EQ(Pass(4.5F), "a");
  EXPECT_EQ(lastSinceLastCall, 2);
}

TEST_F(FlightLoops, LoopThatGoesWhileTheHostIsAskedForTheTimeIsNotScheduled) {
  static Loop* leaving;
  static Loop* coming;
  leaving = &a;
  coming = &b;
  const auto whileItGoes = [&](auto schedule) {
    Start(a, 0);
    gHost.services.GetElapsedTime = [] {
      gHost.services.GetElapsedTime = [] { return 0.0F; };
      VYRADestroyFlightLoop(leaving->id);
      Start(*coming, 0);  // where memory is reused at once, at the same address
      return 0.0F;
    };
    schedule();
    return Pass(1);
  };
  EXPECT_EQ(whileItGoes([&] { VYRAScheduleFlightLoop(a.id, -1, 1); }), "");
  EXPECT_EQ(whileItGoes([&] { VYRASetFlightLoopCallbackInterval(Call, -1, 1, &a); }), "");
}

}  // namespace
