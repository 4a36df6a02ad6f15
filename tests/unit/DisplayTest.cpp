// Draw callbacks in the steps of a frame, key sniffers and hot keys in the way of a keystroke.
#include <array>
#include <string>

#include "PluginFixture.h"
#include "VYRADisplayInternal.h"
#include "VYRALoaderLifecycle.h"

namespace {

// A draw callback or sniffer that notes its name, answers its result and does its action.
struct Actor {
  const char* name;
  int result = 1;
  void (*action)() = nullptr;
};

class Display : public PluginFixture {
 protected:
  static int Act(void* refcon) {
    const Actor actor = *static_cast<Actor*>(refcon);
    trace.emplace_back(actor.name);
    if (actor.action != nullptr) actor.action();
    return actor.result;
  }
  static int Draw(int, int, void* refcon) { return Act(refcon); }
  static int Sniff(char, int, char, void* refcon) { return Act(refcon); }
  static void Fire(void* refcon) { Act(refcon); }

  static std::string Traced() {
    std::string line;
    for (const std::string& word : std::exchange(trace, {})) line += word + " ";
    return line;
  }

  static inline Actor a{"a"};
  static inline Actor b{"b"};
  static inline Actor c{"c"};
};

TEST_F(Display, StepsServeTheirPhasesInTheHostsOrder) {
  const auto note = [](int phase, int isBefore, void*) {
    trace.push_back(std::to_string(phase) + (isBefore != 0 ? "-" : "+"));
    return 0;
  };
  for (const int phase : {0, 5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 100, 101, 102}) {
    for (const int before : {0, 1}) VYRARegisterDrawCallback(note, phase, before, nullptr);
  }
  std::string results;
  for (int step = -1; step <= 27; ++step) results += std::to_string(VYRADisplayDoDrawingHook(step, 0));
  EXPECT_EQ(Traced(),
            "0- 0+ 5- 5+ 10- 10+ 15- 15+ 20- 20+ 25- 25+ 30- 30+ 35- 35+ 40- 40+ 45- 45+ 55- 55+ 50- 50+ "
            "101- 101+ 100- 100+ 102- 102+ ");
  EXPECT_EQ(results,
            "11"
            "0"
            "01010101011"
            "0"
            "01011"
            "0"
            "1"
            "010101"
            "1");
}

TEST_F(Display, PhaseIsServedAgainWhenItsCallbacksCameBack) {
  constexpr int kBeforeWindows = 19;  // phase 50
  for (int round = 0; round < 2; ++round) {
    VYRARegisterDrawCallback(Draw, 50, 1, &a);
    EXPECT_EQ((VYRADisplayDoDrawingHook(kBeforeWindows, 0), Traced()), "a ");
    VYRAUnregisterDrawCallback(Draw, 50, 1, &a);
    for (int frame = 0; frame < 2; ++frame) VYRADisplayDoDrawingHook(kBeforeWindows, 0);
    EXPECT_EQ(Traced(), "");
  }
}

TEST_F(Display, DrawResultsCombineBitByBit) {
  const auto result = [](int first, int second) {
    a.result = first;
    b.result = second;
    VYRARegisterDrawCallback(Draw, 5, 1, &a);
    VYRARegisterDrawCallback(Draw, 5, 1, &b);
    return VYRADisplayDoDrawingHook(2, 0);
  };
  EXPECT_EQ(VYRADisplayDoDrawingHook(2, 0), 1);
  EXPECT_EQ(result(1, 0), 0);
  EXPECT_EQ(result(1, 2), 0);
  EXPECT_EQ(result(3, 1), 1);
  EXPECT_EQ(Traced(), "b a b a b a ");
}

TEST_F(Display, ReflectionsAreDrawnByThoseWhoAskedForThem) {
  const VYRAPluginID plugin = AddPlugin("p");
  RunAs(plugin, [] { VYRARegisterDrawCallback(Draw, 5, 0, &a); });
  for (const int pass : {0, 1, 2}) VYRADisplayDoDrawingHook(3, pass);
  EXPECT_EQ(Traced(), "a a ");
  RunAs(plugin, [] { VYRAEnableFeature(VYRA_FEATURE_WANTS_REFLECTIONS, 1); });
  VYRADisplayDoDrawingHook(3, 1);
  EXPECT_EQ(Traced(), "a ");
  VYRARegistrySetEnabled(plugin, false);
  EXPECT_EQ(VYRADisplayDoDrawingHook(3, 0), 1);
  EXPECT_EQ(Traced(), "");
}

TEST_F(Display, RegistrationsAreKnownByTheirValuesWhoeverMadeThem) {
  const VYRAPluginID plugin = AddPlugin("p");
  EXPECT_EQ(VYRARegisterDrawCallback(Draw, 5, 0, &a), 1);
  EXPECT_EQ(RunAs(plugin, [] { return VYRARegisterDrawCallback(Draw, 5, 0, &a); }), 0);
  EXPECT_EQ(VYRARegisterDrawCallback(Draw, 5, 1, &a), 1);
  EXPECT_EQ(VYRAUnregisterDrawCallback(Draw, 6, 0, &a), 0);
  EXPECT_EQ(RunAs(plugin, [] { return VYRAUnregisterDrawCallback(Draw, 5, 0, &a); }), 1);
  EXPECT_EQ(VYRAUnregisterDrawCallback(Draw, 5, 0, &a), 0);
  EXPECT_EQ(VYRARegisterKeySniffer(Sniff, 1, &a), 1);
  EXPECT_EQ(VYRARegisterKeySniffer(Sniff, 1, &a), 0);
  EXPECT_EQ(VYRAUnregisterKeySniffer(Sniff, 0, &a), 0);
  EXPECT_EQ(VYRAUnregisterKeySniffer(Sniff, 1, &a), 1);
}

TEST_F(Display, DrawCallbackMayRemoveItselfItsNeighboursAndAddMore) {
  b.action = [] {
    for (Actor* actor : {&a, &b, &c}) VYRAUnregisterDrawCallback(Draw, 5, 0, actor);
    VYRARegisterDrawCallback(Draw, 5, 0, &a);
  };
  for (Actor* actor : {&a, &b, &c}) VYRARegisterDrawCallback(Draw, 5, 0, actor);
  VYRADisplayDoDrawingHook(3, 0);
  EXPECT_EQ(Traced(), "c b ");
  VYRADisplayDoDrawingHook(3, 0);
  EXPECT_EQ(Traced(), "a ");
}

TEST_F(Display, KeyGoesToSnifferThenHotKeyThenFocusThenTheOthersUntilConsumed) {
  static Actor window{"window", 1};
  VYRARegisterKeySniffer(Sniff, 0, &c);
  VYRARegisterKeySniffer(Sniff, 1, &a);
  VYRARegisterKeySniffer(Sniff, 1, &b);
  EXPECT_EQ(VYRADisplayKeyPressHook('x', 0, 'X'), 1);
  EXPECT_EQ(Traced(), "b a c ");
  EXPECT_EQ(VYRADisplayKeyPressHook(0, 0, 0), 1);
  EXPECT_EQ(Traced(), "") << "no key at all";

  VYRATakeKeyboardFocus(VYRACreateWindow(
      0, 9, 9, 0, 1, nullptr, [](VYRAWindowID, char, int, char, void* r, int) { Act(r); }, nullptr, &window));
  EXPECT_EQ(VYRADisplayKeyPressHook('x', 0, 'X'), 0);
  EXPECT_EQ(Traced(), "b a window ");
  static Actor hotKey{"hot"};
  VYRARegisterHotKey('X', 0, "", Fire, &hotKey);
  EXPECT_EQ(VYRADisplayKeyPressHook('x', 0, 'X'), 0);
  EXPECT_EQ(Traced(), "b a hot ");
  a.result = 0;
  EXPECT_EQ(VYRADisplayKeyPressHook('x', 0, 'X'), 0);
  EXPECT_EQ(Traced(), "b a ");
}

TEST_F(Display, SniffersComeAndGoWhileTheDepthOnlyRises) {
  a.action = [] {
    VYRAUnregisterKeySniffer(Sniff, 1, &a);
    VYRAUnregisterKeySniffer(Sniff, 1, &b);
  };
  for (Actor* actor : {&c, &b, &a}) VYRARegisterKeySniffer(Sniff, 1, actor);
  VYRADisplayKeyPressHook('x', 0, 'X');
  EXPECT_EQ(Traced(), "a c ");
  EXPECT_EQ(gKeyCallbacks.IterationDepth(), 2);
  VYRADisplayKeyPressHook('x', 0, 'X');
  EXPECT_EQ(Traced(), "c ");
  EXPECT_EQ(gKeyCallbacks.IterationDepth(), 4);
}

TEST_F(Display, NewestHotKeyOfACombinationFiresAlone) {
  const VYRAHotKeyID older = VYRARegisterHotKey('K', 1, "older", Fire, &a);
  const VYRAHotKeyID newer = VYRARegisterHotKey('K', 1, "newer", Fire, &b);
  VYRARegisterHotKey('K', 1, nullptr, nullptr, nullptr);
  EXPECT_TRUE(VYRADispatchHotKey('K', 1));
  EXPECT_FALSE(VYRADispatchHotKey('K', 3)) << "flags match exactly or not at all";
  VYRASetHotKeyCombination(newer, 'K', 3);
  EXPECT_TRUE(VYRADispatchHotKey('K', 3));
  EXPECT_TRUE(VYRADispatchHotKey('K', 1));
  VYRAUnregisterHotKey(older);
  VYRAUnregisterHotKey(older);
  VYRASetHotKeyCombination(older, 'K', 3);
  EXPECT_FALSE(VYRADispatchHotKey('K', 1));
  EXPECT_EQ(Traced(), "b b a ");
  EXPECT_EQ(VYRACountHotKeys(), 2);
  EXPECT_EQ(VYRAGetNthHotKey(1), newer);
  EXPECT_EQ(VYRAGetNthHotKey(2), nullptr);
  EXPECT_EQ(VYRAGetNthHotKey(-1), nullptr);
}

TEST_F(Display, HotKeyIsGoneAfterItsRemovalWhateverTheDepth) {
  static VYRAHotKeyID self;
  a.action = [] { VYRAUnregisterHotKey(self); };
  self = VYRARegisterHotKey('K', 0, "", Fire, &a);
  VYRACountHotKeys();
  VYRACountHotKeys();
  EXPECT_EQ(gHotKeys.IterationDepth(), 2);
  EXPECT_TRUE(VYRADispatchHotKey('K', 0));
  EXPECT_EQ(VYRACountHotKeys(), 0);
  EXPECT_FALSE(VYRADispatchHotKey('K', 0));
}

TEST_F(Display, HotKeyTellsAllOfItselfInBuffersOfTheStatedSize) {
  const VYRAPluginID plugin = AddPlugin("p");
  const auto described = [&](std::size_t length) {
    return RunAs(plugin,
                 [&] { return VYRARegisterHotKey('K', 5, std::string(length, 'd').c_str(), Fire, &a); });
  };
  char virtualKey = 0;
  int flags = 0;
  std::array<char, VYRA_HOT_KEY_DESCRIPTION_SIZE> description;
  VYRAPluginID owner = -1;
  VYRAGetHotKeyInfo(described(511), &virtualKey, &flags, description.data(), &owner);
  EXPECT_EQ(std::string(description.data()).size(), 511U);
  EXPECT_EQ(virtualKey, 'K');
  EXPECT_EQ(flags, 5);
  EXPECT_EQ(owner, plugin);
  VYRAGetHotKeyInfo(described(600), nullptr, nullptr, description.data(), nullptr);
  EXPECT_EQ(std::string(description.data()), std::string(511, 'd'));
  VYRAGetHotKeyInfo(nullptr, &virtualKey, nullptr, nullptr, nullptr);
}

TEST_F(Display, DepartingPluginTakesAllItRegisteredAndNothingElse) {
  const VYRAPluginID plugin = AddPlugin("p");
  const auto registerAll = [](Actor& actor) {
    VYRARegisterDrawCallback(Draw, 5, 0, &actor);
    VYRARegisterKeySniffer(Sniff, 1, &actor);
    VYRARegisterHotKey('K', 0, "", Fire, &actor);
    VYRACreateWindow(
        0, 9, 9, 0, 1, [](VYRAWindowID, void* refcon) { Act(refcon); }, nullptr, nullptr, &actor);
  };
  registerAll(a);
  RunAs(plugin, [&] { registerAll(b); });
  VYRADisplayKeyPressHook('x', 0, 'X');
  Traced();
  UnloadOnePlugin(plugin);
  VYRADisplayDoDrawingHook(3, 0);
  VYRADisplayDoDrawingHook(20, 0);
  VYRADisplayKeyPressHook('k', 0, 'K');
  EXPECT_EQ(Traced(), "a a a a ");
  EXPECT_EQ(VYRACountHotKeys(), 1);
}

}  // namespace
