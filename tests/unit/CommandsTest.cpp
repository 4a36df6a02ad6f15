// Commands: what plugins hold, whose handlers are called in which order, and what handlers and the host may
// do to both meanwhile.
#include <string>
#include <utility>

#include "PluginFixture.h"
#include "VYRAUtilitiesCommands.h"
#include "VYRAWatch.h"

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
    called += handler.name;
    if (handler.action != nullptr) handler.action();
    return handler.result;
  }
  static void Add(Handler& one, int before) { VYRARegisterCommandHandler(kGear, Call, before, &one); }
  static void Remove(Handler& one, int before) { VYRAUnregisterCommandHandler(kGear, Call, before, &one); }
  static void AddOnBothSides(std::initializer_list<Handler*> handlers) {
    for (Handler* handler : handlers) {
      Add(*handler, 5);
      Add(*handler, 0);
    }
  }

  // The names of the handlers that are called in a pass.
  static std::string Pass(int before) {
    called.clear();
    VYRADispatchCommandHook(kGear, 0, 0, before);
    return called;
  }

  static void Hold(std::initializer_list<unsigned> numbers) {
    for (const unsigned number : numbers) VYRACommandBegin(Ref(number));
  }
  static std::string Repeat() {
    gHost.calls.clear();
    VYRACommandRepeatHook();
    return Told("CommandRepeat");
  }
  // The commands of the noted calls of a service, as "(2)(4)".
  static std::string Told(const std::string& service) {
    std::string numbers;
    for (const std::string& call : gHost.CallsOf(service)) numbers += call.substr(service.size());
    return numbers;
  }

  static inline std::string called;
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
  EXPECT_EQ(gHost.calls, (Lines{"FindCommand(sim/foo|Foo|1)", "FindCommand(Sim/foo|null|1)",
                                "FindCommand(sim/foo|null|0)"}));
}

TEST_F(Commands, WarningNamesItsPluginWhateverTheHostsLogLeadsTo) {
  gHost.services.DebugString = [](const char* text) {
    gHost.log += text;
    for (int i = 0; i < 100; ++i) AddPlugin("other");
  };
  RunAs(AddPlugin("a"), [] { VYRACreateCommand("sim/foo", "Foo"); });
  EXPECT_EQ(gHost.log, "[The a]: It is illegal to register a command starting with sim/\n");
}

TEST_F(Commands, NewestHandlerIsFirstBeforeTheHostAndLastAfterItUntilOneStopsThePass) {
  RunAs(AddPlugin("a"), [] { AddOnBothSides({&a}); });
  RunAs(AddPlugin("b"), [] { AddOnBothSides({&b}); });
  EXPECT_EQ(VYRADispatchCommandHook(kGear, 1, 0, 1), 1);
  EXPECT_EQ(VYRADispatchCommandHook(kGear, 0, 0, 0), 1);
  EXPECT_EQ(VYRADispatchCommandHook(kGear, 1, 1, 2), 1) << "pressed and released at once is an end";
  EXPECT_EQ(trace, (Lines{"b0 as 2", "a0 as 1", "a1 as 1", "b1 as 2", "b2 as 2", "a2 as 1"}));
  VYRARegistrySetEnabled(1, false);
  EXPECT_EQ(Pass(0), "b");
  Handler stops{'s', nullptr, 0};
  Add(stops, 1);
  EXPECT_EQ(VYRADispatchCommandHook(kGear, 0, 1, 1), 0);
  EXPECT_EQ(trace.back(), "s2 as 0");
}

TEST_F(Commands, UnregisteringTakesTheFirstFullMatchOfTheCallersOwn) {
  AddOnBothSides({&a, &b, &a, &c});
  RunAs(AddPlugin("other"), [] { Remove(a, 1); });
  Remove(d, 1);
  VYRAUnregisterCommandHandler(Ref(11), Call, 1, &a);
  VYRARegisterCommandHandler(kGear, nullptr, 1, nullptr);
  VYRAUnregisterCommandHandler(kGear, nullptr, 1, nullptr);
  EXPECT_EQ(Pass(1), "caba");
  Remove(a, 1);
  Remove(a, 0);
  EXPECT_EQ(Pass(1) + " " + Pass(0), "cba bac");
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
  AddOnBothSides({&c});
  RunAs(AddPlugin("a"), [] { AddOnBothSides({&b, &a}); });
  EXPECT_THROW(Pass(1), int);
  EXPECT_EQ(VYRADispatchDepth(), 0);
  EXPECT_EQ(VYRAGetMyID(), VYRA_HOST_PLUGIN);
  for (const int before : {1, 0}) EXPECT_EQ(Pass(before), "c");
}

TEST_F(Commands, HeldCommandsAreContinuedInOrderWhileTheirPluginIsEnabledAndEndedWhenItLeaves) {
  Hold({5});
  RunAs(AddPlugin("a"), [] { Hold({9}); });
  RunAs(AddPlugin("b"), [] {
    Hold({5, 3, 5});
    VYRACommandOnce(Ref(3));
    VYRACommandOnce(Ref(4));
  });
  EXPECT_EQ(Told("CommandBegin"), "(5)(9)(5)(3)(5)(3)(4)");
  EXPECT_EQ(Told("CommandEnd"), "(3)(4)");
  EXPECT_EQ(Repeat(), "(5)(9)(3)(5)");
  VYRARegistrySetEnabled(1, false);
  EXPECT_EQ(Repeat(), "(5)(3)(5)");
  RunAs(1, [] { VYRACommandEnd(Ref(3)); });
  EXPECT_EQ(Told("CommandEnd"), "(3)") << "held or not";
  VYRACommandCleanupHook(2);
  EXPECT_EQ(Told("CommandEnd"), "(3)(3)(5)");
  VYRARegistrySetEnabled(1, true);
  EXPECT_EQ(Repeat(), "(5)(9)") << "also the host's own";
  RunAs(1, [] { VYRACommandEnd(Ref(9)); });
  EXPECT_EQ(Repeat(), "(5)");
}

TEST_F(Commands, WhatIsPressedWhileHeldCommandsAreToldWaitsForTheNextTime) {
  static std::uintptr_t highest;
  static constexpr auto pressHigher = [](VYRACommandRef) {
    ASSERT_LT(highest, 1000U) << "what is pressed meanwhile is told of, and so on without an end";
    VYRACommandBegin(Ref(++highest));
  };
  highest = 8;
  Hold({7, 8});
  gHost.services.CommandRepeat = pressHigher;
  VYRACommandRepeatHook();
  EXPECT_EQ(highest, 10U) << "once for each of the two";
  VYRACommandRepeatHook();
  EXPECT_EQ(highest, 14U) << "once for each of the four";

  RunAs(AddPlugin("a"), [] { Hold({7, 8}); });
  gHost.services.CommandEnd = [](VYRACommandRef command) { RunAs(1, [=] { pressHigher(command); }); };
  VYRACommandCleanupHook(1);
  EXPECT_EQ(highest, 16U);
  for (const VYRAHeldCommand& held : gCommandMap) EXPECT_EQ(held.owner, VYRA_HOST_PLUGIN);
}

TEST_F(Commands, CommandIsReleasedAlsoWhenAHandlerOfItsEndThrows) {
  Hold({7});
  gHost.services.CommandEnd = [](VYRACommandRef) { throw 1; };
  EXPECT_THROW(VYRACommandEnd(Ref(7)), int);
  EXPECT_EQ(Repeat(), "");
}

TEST_F(Commands, ThoseThatNobodyHandlesAnyMoreLeaveTheTable) {
  const VYRAPluginID leaver = AddPlugin("a");
  const auto each = [](std::uintptr_t step, auto change) {
    for (std::uintptr_t command = 0; command < 6000; command += step) change(Ref(command), Call, 0, &a);
  };
  each(1, VYRAUnregisterCommandHandler);
  EXPECT_EQ(gPostHooks->Count(), 0U) << "asking for none makes none";
  each(1, VYRARegisterCommandHandler);
  RunAs(leaver, [&] { each(2, VYRARegisterCommandHandler); });
  each(3, VYRAUnregisterCommandHandler);
  EXPECT_EQ(gPostHooks->Count(), 5000U) << "of each third the leaver still handles the half";
  VYRACommandCleanupHook(leaver);
  EXPECT_EQ(gPostHooks->Count(), 4000U);
  for (std::uintptr_t command = 0; command < 6000; ++command) {
    called.clear();
    VYRADispatchCommandHook(Ref(command), 0, 0, 0);
    ASSERT_EQ(called, command % 3 == 0 ? "" : "a") << command;
  }
  each(1, VYRAUnregisterCommandHandler);
  EXPECT_EQ(gPostHooks->Count(), 0U);
}

TEST_F(Commands, HostMayChangeWhatIsHeldWhileItIsToldOfIt) {
  static std::string told;
  static constexpr auto note = [](VYRACommandRef command) {
    told += std::to_string(reinterpret_cast<std::uintptr_t>(command));
  };
  RunAs(AddPlugin("a"), [] { Hold({2, 4, 6, 8}); });
  gHost.services.CommandRepeat = [](VYRACommandRef command) {
    note(command);
    if (command != Ref(2)) return;
    const StActAs asHolder(1);
    for (const unsigned number : {2U, 4U}) VYRACommandEnd(Ref(number));
    Hold({1});
  };
  VYRACommandRepeatHook();
  EXPECT_EQ(told, "268");
  told.clear();
  gHost.services.CommandEnd = [](VYRACommandRef command) {
    note(command);
    if (command == Ref(1)) RunAs(1, [] { Hold({1}); });
    if (command == Ref(6)) VYRACommandCleanupHook(1);
  };
  VYRACommandCleanupHook(1);
  EXPECT_EQ(told, "1618") << "the one that was pressed again is ended again";
  EXPECT_TRUE(gCommandMap.empty());
}

TEST_F(Commands, HostSeesTheHandlersInTheOrderOfTheirCalls) {
  Handler first{'a'};
  Handler second{'b'};
  for (const auto& [plugin, handler] :
       {std::pair(AddPlugin("a"), &first), std::pair(AddPlugin("b"), &second)})
    RunAs(plugin, [&, handler = handler] { AddOnBothSides({handler}); });
  RunAs(1, [&] { Remove(first, 0); });

  VYRACommandHandlerInfo infos[3] = {};
  ASSERT_EQ(VYRAGetCommandHandlers(kGear, infos, 2), 3) << "one has no room, and is counted";
  EXPECT_EQ(infos[2].plugin, 0);
  ASSERT_EQ(VYRAGetCommandHandlers(kGear, infos, 3), 3);
  EXPECT_EQ(std::pair(infos[0].plugin, infos[0].isBefore), std::pair(2, 1));
  EXPECT_EQ(std::pair(infos[1].plugin, infos[1].isBefore), std::pair(1, 1));
  EXPECT_EQ(std::pair(infos[2].plugin, infos[2].isBefore), std::pair(2, 0));
  EXPECT_EQ(VYRAGetCommandHandlers(Ref(11), nullptr, 0), 0);
}

}  // namespace
