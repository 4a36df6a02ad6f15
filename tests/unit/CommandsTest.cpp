// Commands: what plugins hold, whose handlers are called in which order, and what handlers and the host may
// do to both meanwhile.
#include <string>

#include "PluginFixture.h"
#include "VYRAUtilitiesCommands.h"

namespace {

struct Handler {
  char name;
  void (*action)() = nullptr;
  int result = 1;
};

VYRACommandRef Ref(std::uintptr_t number) { return reinterpret_cast<VYRACommandRef>(number); }

const VYRACommandRef kGear = Ref(10);

class Commands : public PluginFixture {
 protected:
  static int Call(VYRACommandRef, int phase, void* refcon) {
    const Handler& handler = *static_cast<Handler*>(refcon);
    trace.push_back(handler.name + std::to_string(phase) + " as " + std::to_string(VYRAGetMyID()));
    if (handler.action != nullptr) handler.action();
    return handler.result;
  }
  static void Add(Handler& handler, int before = 1) {
    VYRARegisterCommandHandler(kGear, Call, before, &handler);
  }
  static void Remove(Handler& handler, int before = 1) {
    VYRAUnregisterCommandHandler(kGear, Call, before, &handler);
  }

  // The names of the handlers that are called in a pass.
  static std::string Pass(int before = 1) {
    trace.clear();
    VYRADispatchCommandHook(kGear, 0, 0, before);
    std::string called;
    for (const std::string& line : trace) called += line[0];
    return called;
  }

  static void Hold(std::initializer_list<unsigned> numbers) {
    for (const unsigned number : numbers) VYRACommandBegin(Ref(number));
  }
  static Lines Repeat() {
    gHost.calls.clear();
    VYRACommandRepeatHook();
    return gHost.calls;
  }

  static inline Handler a{'a'}, b{'b'}, c{'c'}, d{'d'};
};

TEST_F(Commands, SimulatorsPrefixIsReportedTwiceInTwoWordingsAndNotRefused) {
  gHost.Answer("FindCommand", 7);
  RunAs(AddPlugin("a"), [] {
    EXPECT_EQ(VYRACreateCommand("sim/foo", "Foo"), Ref(7));
    EXPECT_EQ(VYRACreateCommand("Sim/foo", nullptr), Ref(7));
    EXPECT_EQ(VYRAFindCommand("sim/foo"), Ref(7));
    EXPECT_EQ(VYRACreateCommand(nullptr, "x"), nullptr);
    EXPECT_EQ(VYRAFindCommand(nullptr), nullptr);
  });
  EXPECT_EQ(errors, Lines{"1: Plugin is illegally registering a command with the prefix sim/"});
  EXPECT_EQ(gHost.log, "[The a]: It is illegal to register a command starting with sim/\n");
  EXPECT_EQ(gHost.calls,
            (Lines{"FindCommand(sim/foo|Foo|1)", "FindCommand(Sim/foo||1)", "FindCommand(sim/foo|null|0)"}));
}

TEST_F(Commands, NewestHandlerIsFirstBeforeTheHostAndLastAfterItUntilOneStopsThePass) {
  for (Handler* handler : {&a, &b}) {
    RunAs(AddPlugin({handler->name}), [&] {
      Add(*handler, 5);
      Add(*handler, 0);
    });
  }
  EXPECT_EQ(VYRADispatchCommandHook(kGear, 1, 0, 1), 1);
  EXPECT_EQ(VYRADispatchCommandHook(kGear, 0, 0, 0), 1);
  EXPECT_EQ(VYRADispatchCommandHook(kGear, 1, 1, 2), 1) << "pressed and released at once is an end";
  EXPECT_EQ(trace, (Lines{"b0 as 2", "a0 as 1", "a1 as 1", "b1 as 2", "b2 as 2", "a2 as 1"}));
  Record(1).enabled = false;
  EXPECT_EQ(Pass(0), "b");
  Handler stops{'s', nullptr, 0};
  Add(stops);
  EXPECT_EQ(VYRADispatchCommandHook(kGear, 0, 1, 1), 0);
  EXPECT_EQ(trace.back(), "s2 as 0");
  EXPECT_EQ(VYRADispatchCommandHook(Ref(11), 0, 1, 1), 1);
}

TEST_F(Commands, UnregisteringTakesTheFirstFullMatchOfTheCallersOwn) {
  for (Handler* handler : {&a, &b, &a, &c}) {
    Add(*handler, 1);
    Add(*handler, 0);
  }
  RunAs(AddPlugin("other"), [] { Remove(a); });
  Remove(d);
  VYRAUnregisterCommandHandler(Ref(11), Call, 1, &a);
  VYRARegisterCommandHandler(kGear, nullptr, 1, nullptr);
  VYRAUnregisterCommandHandler(kGear, nullptr, 1, nullptr);
  EXPECT_EQ(Pass(), "caba");
  Remove(a, 1);
  Remove(a, 0);
  EXPECT_EQ(Pass(), "cba");
  EXPECT_EQ(Pass(0), "bac");
}

TEST_F(Commands, HandlersMayLeaveAndJoinWhileTheirCommandIsDispatchedAlsoInsideItself) {
  static int depth;
  b.action = [] {
    for (Handler* leaver : {&b, &c, &b}) Remove(*leaver, 0);
    Add(d, 0);
    Add(d, 1);
    for (unsigned i = 0; i < 100; ++i) VYRARegisterCommandHandler(Ref(i), Call, 0, &a);
    if (++depth < 2) VYRADispatchCommandHook(kGear, 0, 0, 0);
    Add(b, 0);
  };
  for (Handler* handler : {&b, &c, &c, &a}) Add(*handler, 0);
  EXPECT_EQ(Pass(0), "bcadaca") << "those that left are not called, those that came not in the outer pass";
  b.action = nullptr;
  EXPECT_EQ(Pass(0), "cadab");
  EXPECT_EQ(Pass(1), "d");
}

TEST_F(Commands, HandlersPluginMayLeaveAndThrowInTheMiddleOfAPass) {
  a.action = [] {
    VYRACommandCleanupHook(VYRAGetMyID());
    throw 1;
  };
  Add(c);
  RunAs(AddPlugin("a"), [] {
    Add(b);
    Add(a);
  });
  EXPECT_THROW(Pass(), int);
  EXPECT_EQ(gDispatchDepth + VYRAGetMyID(), 0);
  EXPECT_EQ(Pass(), "c");
}

TEST_F(Commands, HeldCommandsOfEnabledPluginsAreContinuedInOrderOfPluginAndHandle) {
  RunAs(AddPlugin("a"), [] { Hold({9}); });
  RunAs(AddPlugin("b"), [] {
    Hold({5, 3, 5});
    VYRACommandOnce(Ref(3));
    VYRACommandOnce(Ref(4));
  });
  EXPECT_EQ(gHost.CallsOf("CommandBegin").size(), 6U);
  EXPECT_EQ(gHost.CallsOf("CommandEnd"), (Lines{"CommandEnd(3)", "CommandEnd(4)"}));
  EXPECT_EQ(Repeat(), (Lines{"CommandRepeat(9)", "CommandRepeat(3)", "CommandRepeat(5)"}));
  Record(2).enabled = false;
  EXPECT_EQ(Repeat(), Lines{"CommandRepeat(9)"});
  Record(2).enabled = true;
  RunAs(2, [] { VYRACommandEnd(Ref(5)); });
  RunAs(1, [] { VYRACommandEnd(Ref(3)); });
  EXPECT_EQ(gHost.CallsOf("CommandEnd"), (Lines{"CommandEnd(5)", "CommandEnd(3)"})) << "held or not";
  EXPECT_EQ(Repeat(), (Lines{"CommandRepeat(9)", "CommandRepeat(3)"}));
}

TEST_F(Commands, DepartingPluginsCommandsAreEndedAndItsHandlersGoFromBothSides) {
  RunAs(AddPlugin("a"), [] { Hold({3, 1, 2}); });
  Hold({2});
  for (const auto& [plugin, handler] : {std::pair{1, &a}, {0, &b}, {1, &a}, {0, &c}}) {
    RunAs(plugin, [one = handler] {
      Add(*one, 1);
      Add(*one, 0);
    });
  }
  VYRACommandCleanupHook(1);
  EXPECT_EQ(gHost.CallsOf("CommandEnd"), (Lines{"CommandEnd(1)", "CommandEnd(2)", "CommandEnd(3)"}));
  EXPECT_EQ(Repeat(), Lines{"CommandRepeat(2)"}) << "the host's own";
  EXPECT_EQ(Pass(1) + Pass(0), "cbbc");
}

TEST_F(Commands, HostMayChangeWhatIsHeldWhileItIsToldOfIt) {
  static constexpr auto note = [](VYRACommandRef command) {
    trace.push_back(std::to_string(reinterpret_cast<std::uintptr_t>(command)));
  };
  RunAs(AddPlugin("a"), [] { Hold({2, 4, 6, 8}); });
  gHost.services.CommandRepeat = [](VYRACommandRef command) {
    note(command);
    if (command != Ref(2)) return;
    RunAs(1, [] {
      VYRACommandEnd(Ref(2));
      VYRACommandEnd(Ref(4));
      VYRACommandBegin(Ref(1));
    });
  };
  VYRACommandRepeatHook();
  EXPECT_EQ(trace, (Lines{"2", "6", "8"}));
  trace.clear();
  gHost.services.CommandEnd = [](VYRACommandRef command) {
    note(command);
    if (command == Ref(1)) RunAs(1, [] { Hold({1}); });
    if (command == Ref(6)) VYRACommandCleanupHook(1);
  };
  VYRACommandCleanupHook(1);
  EXPECT_EQ(trace, (Lines{"1", "6", "1", "8"})) << "the one that was pressed again is ended again";
  EXPECT_TRUE(gCommandMap.empty());
}

}  // namespace
